#include "threads/deadline.h"

namespace lumora {

Deadline deadlineFromNow() {
  constexpr std::chrono::seconds waitLimit{5};
  return std::chrono::steady_clock::now() + waitLimit;
}

std::chrono::nanoseconds timeLeft(Deadline deadline) {
  return deadline - std::chrono::steady_clock::now();
}

}  // namespace lumora
