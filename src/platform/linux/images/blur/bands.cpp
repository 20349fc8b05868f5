#include "platform/linux/images/blur/bands.h"

#include <algorithm>

#include "platform/linux/helper_thread.h"

namespace platform::backend::blur {

void inBands(Band rows, const std::function<void(Band)>& work) {
  // Processing fewer takes less time than waking a thread.
  constexpr int minRows = 16;
  const int count = rows.end - rows.first;
  const int bands = std::clamp(count / minRows, 1, std::max(1, maxHelpers()));
  auto startOf = [&rows, count, bands](int band) { return rows.first + count * band / bands; };
  inParallel(static_cast<std::size_t>(bands), 1, [&](std::size_t band) {
    const auto number = static_cast<int>(band);
    work({startOf(number), startOf(number + 1)});
  });
}

}  // namespace platform::backend::blur
