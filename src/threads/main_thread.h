// Whether code runs on the main queue, for debugging.
#pragma once

namespace lumora {

// True within a block of the main queue. False within one of any other queue, and on a thread that
// is not running a block at all. Any thread.
bool isMainThread();

}  // namespace lumora
