#include "platform/linux/images/blur/bands.h"

#include "platform/linux/helper_thread.h"

namespace platform::backend::blur {

void inBands(Band rows, const std::function<void(Band)>& work) {
  // Processing fewer takes less time than starting a thread.
  constexpr int minForTwoThreads = 32;
  if (rows.end - rows.first < minForTwoThreads) return work(rows);
  const int middle = rows.first + (rows.end - rows.first) / 2;
  auto helper = startOnHelperThread([&work, middle, end = rows.end] { work({middle, end}); });
  work({rows.first, middle});
  helper.get();
}

}  // namespace platform::backend::blur
