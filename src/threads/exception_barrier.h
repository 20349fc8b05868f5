// An exception in code of the library must not terminate the host process. The barrier stands at
// every way in: in the hooks around what is the library's own, in notifications, messages and
// key-value observing, in the blocks of all queues and in display links.
#pragma once

#include <functional>

namespace lumora {

// Runs the body; an exception of the platform or of the language ends the body, and nothing more.
void stoppingExceptions(const std::function<void()>& body) noexcept;

}  // namespace lumora
