#include "bench/bench_peers.h"

#include <cstdio>
#include <string_view>

#include "platform/linux/freed_memory.h"

int main(int count, char** words) {
  platform::keepFreedMemory();
  const std::string_view name = count == 2 ? words[1] : "";
  if (name == "blur") {
    bench::benchBlur();
  } else if (name == "loading") {
    bench::benchLoading();
  } else {
    std::fprintf(stderr, "usage: bench-peers blur|loading\n");
    return 2;
  }
  return 0;
}
