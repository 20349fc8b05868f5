// For debugging; no other part of the library uses it.
#pragma once

namespace lumora {

// Returns true if called in a block of the main queue, and false in a block of another queue or in
// no block. Any thread.
bool isMainThread();

}  // namespace lumora
