#include "platform/autorelease_pool.h"

namespace platform {

// This backend has no temporary objects.
NSAutoreleasePool::NSAutoreleasePool() : pool_(nullptr) {}
NSAutoreleasePool::~NSAutoreleasePool() {}

}  // namespace platform
