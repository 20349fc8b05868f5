// The environment of every test: makes blocks objects for GNUstep, and checks at the end that no
// image and no data are leaked.

#include <cstring>

#import <Block.h>
#import <Foundation/Foundation.h>
#import <Foundation/NSDebug.h>
#include <gtest/gtest.h>

#include "simulator/frameworks/stand_ins.h"
#include "tests/ios/pump.h"

// The blocks runtime gives blocks no class on this platform, but GNUstep's queues retain them as
// objects. So they get this class.
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

void makeBlocksObjects() {
  // The size of a class in the old runtime. A class is complete once it has received a message.
  constexpr std::size_t classWords = 13;
  [LWBlock class];
  [[[LWBlock alloc] init] self];
  for (void** place : {_NSConcreteStackBlock, _NSConcreteMallocBlock, _NSConcreteGlobalBlock}) {
    std::memcpy(place, (void*)[LWBlock class], classWords * sizeof(void*));
  }
}

class Surroundings : public testing::Environment {
 public:
  void SetUp() override {
    // For objects that a test autoreleases on the main thread.
    pool_ = [[NSAutoreleasePool alloc] init];
    makeBlocksObjects();
    GSDebugAllocationActive(YES);
  }
  void TearDown() override {
    [pool_ drain];
    for (const char* name :
         {"GIFSource", "GIFProperties", "UIImage", "CIImage", "NSDataMappedFile"}) {
      const Class cls = objc_getClass(name);
      // Background operations may still be finishing.
      EXPECT_TRUE(runUntil([cls] { return GSDebugAllocationCount(cls) == 0; })) << name;
    }
    EXPECT_EQ(stand_ins::bitmaps, 0);
  }

 private:
  NSAutoreleasePool* pool_ = nil;
};

[[maybe_unused]] const auto* const environment =
    testing::AddGlobalTestEnvironment(new Surroundings);

}  // namespace
