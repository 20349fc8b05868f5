// Lets the platform's queues run.
#pragma once

#include <functional>

#import <Foundation/Foundation.h>

// Runs the main run loop until the condition holds. Returns true if it does within ten seconds.
inline bool runUntil(const std::function<bool()>& condition) {
  for (int turns = 0; turns < 1000 && !condition(); ++turns) {
    @autoreleasepool {
      [[NSRunLoop mainRunLoop] runUntilDate:[NSDate dateWithTimeIntervalSinceNow:0.01]];
    }
  }
  return condition();
}
