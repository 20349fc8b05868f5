#include "platform/autorelease_pool.h"

namespace platform {

// Nothing is handed out temporarily here: ownership follows scopes.
NSAutoreleasePool::NSAutoreleasePool() = default;
NSAutoreleasePool::~NSAutoreleasePool() = default;

}  // namespace platform
