#include "platform/autorelease_pool.h"

namespace platform {

// Nothing is handed out temporarily here: ownership follows scopes.
NSAutoreleasePool::NSAutoreleasePool() : pool_(nullptr) {}
NSAutoreleasePool::~NSAutoreleasePool() {}

}  // namespace platform
