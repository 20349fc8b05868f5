// The measures against libraries; each prints its table and its goals.
#pragma once

#include <string>

namespace bench {

void benchBlur();

// One picture as three PNG files; `before` is the picture shown before it.
struct LoadedFiles {
  const char* ours;
  const char* theirs;
  const char* before;
  // Whether most of the picture is as it was before.
  bool standsStill;
};
void benchLoading(const std::string& name, const LoadedFiles& files);

}  // namespace bench
