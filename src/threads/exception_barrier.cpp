#include "threads/exception_barrier.h"

namespace lumora {

void stoppingExceptions(const std::function<void()>& body) noexcept {
  try {
    body();
  } catch (...) {
    // The platform's exceptions are caught here like all others. Failures are silent.
  }
}

}  // namespace lumora
