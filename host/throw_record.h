// Remembers where exceptions are thrown, because the stack is gone where they are caught.
#pragma once

#include <array>
#include <span>

namespace host {

struct Backtrace {
  static constexpr int maxFrames = 64;
  std::array<void*, maxFrames> frames{};
  int size = 0;

  // Returns that of the caller, the innermost frame first.
  static Backtrace here();
  std::span<void* const> used() const {
    return std::span(frames).first(static_cast<std::size_t>(size));
  }
};

// Returns the backtrace of the exception that this thread has thrown last; an empty one if it has
// thrown none.
const Backtrace& lastThrow();

}  // namespace host
