// Error handling for X11. Main thread.
#pragma once

namespace host {

// Ignores all X11 errors, on every connection of the process: windows of other programs may
// disappear at any time, and a request about one then fails. Call it after the initialization of
// libraries that install their own error handler.
void ignoreX11Errors();

}  // namespace host
