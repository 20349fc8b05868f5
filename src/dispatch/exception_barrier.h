// What the library does inside a call of the host must not end the host.
#pragma once

#include <functional>

namespace lumora {

// Runs the body; an exception of the platform or of the language ends the body, and nothing more.
void stoppingExceptions(const std::function<void()>& body) noexcept;

}  // namespace lumora
