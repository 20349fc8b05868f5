#include "platform/linux/images/blur/bands.h"

#include <algorithm>
#include <vector>

#include "platform/linux/helper_thread.h"

namespace platform::backend::blur {

void inBands(Band rows, const std::function<void(Band)>& work) {
  // Processing fewer takes less time than waking a thread.
  constexpr int minRows = 16;
  const int count = rows.end - rows.first;
  const int bands = std::clamp(count / minRows, 1, std::max(1, maxHelpers()));
  auto startOf = [&rows, count, bands](int band) { return rows.first + count * band / bands; };
  std::vector<HelperTask<void>> helpers;
  for (int band = 1; band < bands; ++band) {
    helpers.push_back(startOnHelperThread(
        [&work, part = Band{startOf(band), startOf(band + 1)}] { work(part); }));
  }
  work({rows.first, startOf(1)});
  for (auto& helper : helpers) helper.get();
}

}  // namespace platform::backend::blur
