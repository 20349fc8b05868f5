// An exception in the library must not terminate the host process. This barrier is used wherever
// the platform or the host calls the library: in hooks (but not around the host's original method),
// notifications, messages, key-value observation, blocks of queues, and display links.
#pragma once

#include <functional>

namespace lumora {

// Runs the body on the calling thread. Drops any exception that it throws, of C++ or of the
// platform.
void stoppingExceptions(const std::function<void()>& body) noexcept;

}  // namespace lumora
