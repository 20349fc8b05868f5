// Adds what GNUstep's Foundation lacks, and makes it as strict as the device's.

#include <condition_variable>
#include <mutex>
#include <string>

#import <Foundation/Foundation.h>
#import <dispatch/dispatch.h>
#import <objc/runtime.h>

namespace {

void refuseEmpty(NSString* path) {
  if ([path length] == 0) {
    [NSException raise:NSInvalidArgumentException format:@"nil or empty path argument"];
  }
}

// Exchanges two methods. A strict method then calls GNUstep's own under the strict method's name.
void exchange(Class cls, SEL lenient, SEL strict) {
  method_exchangeImplementations(class_getInstanceMethod(cls, lenient),
                                 class_getInstanceMethod(cls, strict));
}

}  // namespace

@implementation NSFileManager (Strict)

+ (void)load {
  exchange(self, @selector(removeItemAtPath:error:), @selector(strictlyRemove:error:));
  exchange(self, @selector(moveItemAtPath:toPath:error:), @selector(strictlyMove:toPath:error:));
  exchange(self, @selector(copyItemAtPath:toPath:error:), @selector(strictlyCopy:toPath:error:));
  exchange(self, @selector(createDirectoryAtPath:withIntermediateDirectories:attributes:error:),
           @selector(strictlyCreate:withIntermediates:attributes:error:));
}
- (BOOL)strictlyRemove:(NSString*)path error:(NSError**)error {
  refuseEmpty(path);
  return [self strictlyRemove:path error:error];
}
- (BOOL)strictlyMove:(NSString*)path toPath:(NSString*)target error:(NSError**)error {
  refuseEmpty(path);
  refuseEmpty(target);
  return [self strictlyMove:path toPath:target error:error];
}
- (BOOL)strictlyCopy:(NSString*)path toPath:(NSString*)target error:(NSError**)error {
  refuseEmpty(path);
  refuseEmpty(target);
  return [self strictlyCopy:path toPath:target error:error];
}
- (BOOL)strictlyCreate:(NSString*)path
     withIntermediates:(BOOL)intermediates
            attributes:(NSDictionary*)attributes
                 error:(NSError**)error {
  refuseEmpty(path);
  return [self strictlyCreate:path
            withIntermediates:intermediates
                   attributes:attributes
                        error:error];
}

@end

// GNUstep would run the main queue's blocks on any thread.
@implementation NSOperationQueue (Strict)

+ (void)load {
  exchange(self, @selector(addOperationWithBlock:), @selector(addBlockForItsThread:));
}
- (void)addBlockForItsThread:(void (^)(void))block {
  if (self != [NSOperationQueue mainQueue]) {
    [self addBlockForItsThread:block];
    return;
  }
  [self performSelectorOnMainThread:@selector(run:)
                         withObject:[[(id)block copy] autorelease]
                      waitUntilDone:NO];
}
- (void)run:(id)block {
  ((void (^)(void))block)();
}

@end

@implementation NSData (Reading)
+ (instancetype)dataWithContentsOfFile:(NSString*)path
                               options:(NSDataReadingOptions)options
                                 error:(NSError**)error {
  refuseEmpty(path);
  return options == NSDataReadingMappedIfSafe ? [self dataWithContentsOfMappedFile:path]
                                              : [self dataWithContentsOfFile:path];
}
@end

struct dispatch_semaphore_s {
  std::mutex mutex;
  std::condition_variable signalled;
  intptr_t count = 0;
};

dispatch_semaphore_t dispatch_semaphore_create(intptr_t) {
  return new dispatch_semaphore_s;
}
intptr_t dispatch_semaphore_signal(dispatch_semaphore_t semaphore) {
  std::lock_guard lock(semaphore->mutex);
  ++semaphore->count;
  semaphore->signalled.notify_one();
  return 0;
}
intptr_t dispatch_semaphore_wait(dispatch_semaphore_t semaphore, dispatch_time_t limit) {
  std::unique_lock lock(semaphore->mutex);
  const std::chrono::steady_clock::time_point until{std::chrono::nanoseconds(limit)};
  if (!semaphore->signalled.wait_until(lock, until, [=] { return semaphore->count > 0; })) return 1;
  --semaphore->count;
  return 0;
}
dispatch_time_t dispatch_time(dispatch_time_t, int64_t nanoseconds) {
  const std::chrono::nanoseconds now = std::chrono::steady_clock::now().time_since_epoch();
  return static_cast<dispatch_time_t>(now.count() + nanoseconds);
}
void dispatch_release(dispatch_semaphore_t semaphore) {
  delete semaphore;
}
