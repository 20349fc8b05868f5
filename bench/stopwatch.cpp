#include "bench/stopwatch.h"

#include <algorithm>
#include <chrono>
#include <cstdio>

namespace bench {

std::vector<double> medianMilliseconds(int rounds, const Way& prepare,
                                       const std::vector<Way>& ways) {
  using Clock = std::chrono::steady_clock;
  std::vector<std::vector<double>> times(ways.size());
  constexpr int timesInTurn = 3;
  for (int round = 0; round < rounds; ++round) {
    for (std::size_t at = 0; at < ways.size(); ++at) {
      // Threads of other libraries keep polling for work for some time.
      prepare();
      ways[at]();
      for (int each = 0; each < timesInTurn; ++each) {
        prepare();
        const auto start = Clock::now();
        ways[at]();
        const std::chrono::duration<double, std::milli> span = Clock::now() - start;
        times[at].push_back(span.count());
      }
    }
  }
  std::vector<double> medians;
  for (auto& each : times) {
    std::sort(each.begin(), each.end());
    medians.push_back(each[each.size() / 2]);
  }
  return medians;
}

void printRow(const std::vector<std::string>& cells) {
  std::printf("| %-26s |", cells.front().c_str());
  for (std::size_t at = 1; at < cells.size(); ++at) std::printf(" %12s |", cells[at].c_str());
  std::printf("\n");
}

std::string rounded(double value, int digits) {
  char text[32];
  std::snprintf(text, sizeof text, "%.*f", digits, value);
  return text;
}

void printGoal(const std::string& text, bool holds) {
  std::printf("%s  %s\n", holds ? "holds " : "MISSED", text.c_str());
}

}  // namespace bench
