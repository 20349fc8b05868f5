// Says on stderr which library a crash or an exception came from, with a backtrace.
#pragma once

#include <exception>
#include <string>
#include <vector>

namespace host {

// From now on the process writes a report before a crash ends it; the signal stays the same. It
// also writes one, and aborts, if a library calls exit. A signal that has a handler, such as a
// sanitizer's, keeps it. libraries: the paths by which they will be loaded. Call it once, on the
// main thread.
void reportCrashes(std::vector<std::string> libraries);

// Writes a report and aborts if the exception, which this thread has thrown last, was thrown by one
// of the libraries or by a function that it called. Otherwise returns.
void abortIfFromLibrary(const std::exception& exception);

}  // namespace host
