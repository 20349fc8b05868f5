// Benchmarks against other libraries. Each prints a table and which of its goals hold.
#pragma once

#include <string>

namespace bench {

void benchBlur();

// An image as written by Lumora and by the other encoder; `before` is the image shown before it.
struct LoadedFiles {
  const char* ours;
  const char* theirs;
  const char* before;
  // True if most of the image is the same as before.
  bool standsStill;
};
void benchLoading(const std::string& name, const LoadedFiles& files);

}  // namespace bench
