// Time limits of commands.
#pragma once

#include <algorithm>
#include <chrono>

namespace tool {

using Seconds = std::chrono::duration<double>;

// How long a command waits by default.
constexpr Seconds usualTimeout{60};

// A moment that is a timeout away from the construction.
class TimeLimit {
 public:
  explicit TimeLimit(Seconds timeout)
      : end_(std::chrono::steady_clock::now() +
             std::chrono::duration_cast<std::chrono::steady_clock::duration>(timeout)) {}

  std::chrono::steady_clock::time_point end() const { return end_; }
  // Returns the time left, 0 once the limit has passed.
  Seconds left() const {
    return std::max(Seconds(end_ - std::chrono::steady_clock::now()), Seconds::zero());
  }
  bool isOver() const { return left() == Seconds::zero(); }

 private:
  std::chrono::steady_clock::time_point end_;
};

}  // namespace tool
