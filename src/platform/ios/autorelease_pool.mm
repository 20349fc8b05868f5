#include "platform/autorelease_pool.h"

#import <Foundation/Foundation.h>

namespace platform {

NSAutoreleasePool::NSAutoreleasePool() : pool_([[::NSAutoreleasePool alloc] init]) {}

NSAutoreleasePool::~NSAutoreleasePool() {
  [(::NSAutoreleasePool*)pool_ drain];
}

}  // namespace platform
