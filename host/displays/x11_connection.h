// Connections to the X server. Main thread.
#pragma once

struct _XDisplay;

namespace host {

// Opens a connection and waits a few seconds for a server that is just starting. Throws
// std::runtime_error, with the reason, if there is none. The caller closes it.
_XDisplay* openX11Display();

// Ignores all X11 errors, on every connection of the process: windows of other programs may
// disappear at any time, and a request about one then fails. Call it after the initialization of
// libraries that install their own error handler.
void ignoreX11Errors();

}  // namespace host
