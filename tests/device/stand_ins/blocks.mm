// The blocks run-time gives its blocks no class on this platform, but GNUstep's queues retain them
// as objects. So they get one.

#include <cstring>

#import <Block.h>
#import <Foundation/Foundation.h>
#include <gtest/gtest.h>

@interface LWBlock : NSObject
@end

@implementation LWBlock
- (id)retain {
  return (id)Block_copy((void*)self);
}
- (id)copyWithZone:(NSZone*)zone {
  return (id)Block_copy((void*)self);
}
- (oneway void)release {
  Block_release((void*)self);
}
@end

extern "C" {
extern void* _NSConcreteStackBlock[32];
extern void* _NSConcreteMallocBlock[32];
extern void* _NSConcreteGlobalBlock[32];
}

namespace {

class BlocksAreObjects : public testing::Environment {
 public:
  void SetUp() override {
    // For what a test hands out on the main thread.
    [[NSAutoreleasePool alloc] init];
    // The words of a class in the old run-time, complete once it has been sent a message.
    constexpr std::size_t classWords = 13;
    [LWBlock class];
    [[[LWBlock alloc] init] self];
    for (void** place : {_NSConcreteStackBlock, _NSConcreteMallocBlock, _NSConcreteGlobalBlock}) {
      std::memcpy(place, (void*)[LWBlock class], classWords * sizeof(void*));
    }
  }
};

[[maybe_unused]] const auto* const environment =
    testing::AddGlobalTestEnvironment(new BlocksAreObjects);

}  // namespace
