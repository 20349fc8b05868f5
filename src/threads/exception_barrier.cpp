#include "threads/exception_barrier.h"

namespace lumora {

void stoppingExceptions(const std::function<void()>& body) noexcept {
  try {
    body();
  } catch (...) {
    // Failures are silent. This catches the platform's exceptions, too.
  }
}

}  // namespace lumora
