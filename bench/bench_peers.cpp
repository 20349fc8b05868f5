#include "bench/bench_peers.h"

#include <cstdio>
#include <string_view>

#include "platform/linux/freed_memory.h"

int main(int count, char** words) {
  platform::backend::keepFreedMemory();
  const std::string_view name = count > 1 ? words[1] : "";
  constexpr int wordsOfLoading = 6;
  if (name == "blur") {
    bench::benchBlur();
  } else if (name == "loading" && count >= wordsOfLoading) {
    const bool standsStill = count > wordsOfLoading;
    bench::benchLoading(words[2], {words[3], words[4], words[5], standsStill});
  } else {
    std::fprintf(stderr,
                 "usage: bench-peers blur\n"
                 "       bench-peers loading NAME OURS.png THEIRS.png BEFORE.png [stands-still]\n");
    return 2;
  }
  return 0;
}
