#include "dispatch/exception_barrier.h"

#include "platform/key_value_observing.h"

namespace lumora {

void stoppingExceptions(const std::function<void()>& body) noexcept {
  try {
    platform::swallowingNSException(body);
  } catch (...) {
    // Failures are silent.
  }
}

}  // namespace lumora
