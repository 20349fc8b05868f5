#include <algorithm>
#include <atomic>
#include <mutex>
#include <utility>

#import <AppSupport/CPDistributedMessagingCenter.h>
#import <Foundation/Foundation.h>
#import <objc/runtime.h>
#import <substrate.h>

#include "stand_ins.h"

namespace {

struct Observation {
  const void* observer;
  CFNotificationCallback callback;
  std::string name;
};

std::mutex mutex;
std::vector<Observation> observations;
std::vector<std::string> posted;
std::atomic<int> delivered = 0;
std::vector<std::string> hooks;

struct Target {
  id object = nil;
  SEL selector = nullptr;
};
StateTable<Target> linkTargets;

struct Center {
  std::map<std::string, Target> targets;
  bool isServed = false;
};
StateTable<Center> centers;

NSMutableArray* links() {
  static NSMutableArray* list = [[NSMutableArray alloc] init];
  return list;
}

}  // namespace

CFNotificationCenterRef CFNotificationCenterGetDarwinNotifyCenter(void) {
  return nullptr;
}

void CFNotificationCenterAddObserver(CFNotificationCenterRef, const void* observer,
                                     CFNotificationCallback callback, CFStringRef name, const void*,
                                     CFNotificationSuspensionBehavior) {
  if (std::exchange(stand_ins::raisesAtRegistration, false)) {
    [NSException raise:@"NSGenericException" format:@"no"];
  }
  std::lock_guard lock(mutex);
  observations.push_back({observer, callback, [(NSString*)name UTF8String]});
}

void CFNotificationCenterRemoveEveryObserver(CFNotificationCenterRef, const void* observer) {
  std::lock_guard lock(mutex);
  std::erase_if(observations, [=](const Observation& entry) { return entry.observer == observer; });
}

void CFNotificationCenterPostNotification(CFNotificationCenterRef, CFStringRef name, const void*,
                                          CFDictionaryRef, Boolean) {
  std::lock_guard lock(mutex);
  posted.push_back([(NSString*)name UTF8String]);
  if (stand_ins::onPost) stand_ins::onPost(posted.back());
}

const CFStringRef kCFRunLoopDefaultMode = nullptr;

// On the device the notify center is a source of the main run loop.
SInt32 CFRunLoopRunInMode(CFStringRef, CFTimeInterval seconds, Boolean) {
  constexpr double moment = 0.01;
  const int before = delivered;
  NSDate* end = [NSDate dateWithTimeIntervalSinceNow:seconds];
  while (delivered == before && [end timeIntervalSinceNow] > 0) {
    [[NSRunLoop mainRunLoop] runUntilDate:[NSDate dateWithTimeIntervalSinceNow:moment]];
  }
  return delivered == before ? kCFRunLoopRunTimedOut : kCFRunLoopRunHandledSource;
}

namespace stand_ins {

bool raisesAtRegistration = false;
std::function<void(const std::string& name)> onPost;

std::vector<std::string> takePosted() {
  std::lock_guard lock(mutex);
  return std::exchange(posted, {});
}

void postFromOutside(const std::string& name) {
  std::vector<Observation> called;
  {
    std::lock_guard lock(mutex);
    std::copy_if(observations.begin(), observations.end(), std::back_inserter(called),
                 [&](const Observation& entry) { return entry.name == name; });
  }
  for (const Observation& entry : called) {
    ++delivered;
    entry.callback(nullptr, const_cast<void*>(entry.observer),
                   (CFStringRef)[NSString stringWithUTF8String:name.c_str()], nullptr, nullptr);
  }
}

std::vector<std::string> hookedMethods() {
  return hooks;
}

void refreshDisplay() {
  for (CADisplayLink* link in [[links() copy] autorelease]) [link performSelector:@selector(fire)];
}

std::size_t linkCount() {
  return [links() count];
}

}  // namespace stand_ins

void MSHookMessageEx(Class cls, SEL selector, IMP replacement, IMP* previous) {
  hooks.push_back(std::string(class_getName(cls)) + " " + sel_getName(selector));
  Method method = class_getInstanceMethod(cls, selector);
  *previous = method_getImplementation(method);
  class_replaceMethod(cls, selector, replacement, method_getTypeEncoding(method));
}

@implementation CADisplayLink

+ (CADisplayLink*)displayLinkWithTarget:(id)target selector:(SEL)selector {
  CADisplayLink* link = [[[self alloc] init] autorelease];
  linkTargets[link] = {[target retain], selector};
  return link;
}
- (void)setFrameInterval:(NSInteger)refreshes {
}
// A link only fires in the common modes. They are compared by address, as on the device.
- (void)addToRunLoop:(NSRunLoop*)loop forMode:(NSString*)mode {
  if (loop == [NSRunLoop mainRunLoop] && mode == NSRunLoopCommonModes) [links() addObject:self];
}
- (void)fire {
  const Target target = linkTargets[self];
  if (target.object != nil) [target.object performSelector:target.selector withObject:self];
}
- (void)invalidate {
  [[self retain] autorelease];
  [links() removeObject:self];
  [std::exchange(linkTargets[self].object, nil) release];
}
- (double)duration {
  return 1.0 / 60;
}
- (void)dealloc {
  linkTargets.erase(self);
  [super dealloc];
}

@end

@implementation CPDistributedMessagingCenter

+ (CPDistributedMessagingCenter*)centerNamed:(NSString*)name {
  static NSMutableDictionary* known = [[NSMutableDictionary alloc] init];
  @synchronized(self) {
    CPDistributedMessagingCenter* center = [known objectForKey:name];
    if (center == nil) {
      center = [[[self alloc] init] autorelease];
      [known setObject:center forKey:name];
    }
    return center;
  }
}
- (BOOL)doesServerExist {
  return centers[self].isServed;
}
- (void)runServerOnCurrentThread {
  centers[self].isServed = true;
}
- (void)registerForMessageName:(NSString*)message target:(id)target selector:(SEL)selector {
  @synchronized(self) {
    centers[self].targets[[message UTF8String]] = {target, selector};
  }
}
- (BOOL)sendMessageName:(NSString*)message userInfo:(NSDictionary*)userInfo {
  Target target;
  @synchronized(self) {
    if (!centers[self].isServed) return NO;
    target = centers[self].targets[[message UTF8String]];
  }
  if (target.object == nil) return NO;
  [[NSOperationQueue mainQueue] addOperationWithBlock:^{
    [target.object performSelector:target.selector withObject:message withObject:nil];
  }];
  return YES;
}

@end
