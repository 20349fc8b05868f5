#include "platform/ios/run_loop.h"

#import <CoreFoundation/CoreFoundation.h>
#import <Foundation/Foundation.h>

namespace platform::backend {

void runMainLoop(double seconds) {
  @autoreleasepool {
    // It does not wait if nothing can arrive.
    if (CFRunLoopRunInMode(kCFRunLoopDefaultMode, seconds, true) == kCFRunLoopRunFinished) {
      [NSThread sleepForTimeInterval:seconds];
    }
  }
}

}  // namespace platform::backend
