#include "platform/key_value_observing.h"

#include <map>
#include <memory>
#include <mutex>

#import "platform/ios/native_string.h"
#import "platform/ios/native_view.h"

using platform::KeyValueObserver;

// The observer that is registered with the platform. The platform does not retain its observers, so
// Listeners does. A registration that is never removed keeps its observer for good. It has the name
// of the library's listener class, because it is the one that other code meets among the observers.
@interface LWWallpaperListener : NSObject {
 @private
  std::shared_ptr<KeyValueObserver> observer_;
}
- (instancetype)initWithObserver:(const std::shared_ptr<KeyValueObserver>&)observer;
- (const std::shared_ptr<KeyValueObserver>&)observer;
@end

@implementation LWWallpaperListener

- (instancetype)initWithObserver:(const std::shared_ptr<KeyValueObserver>&)observer {
  self = [super init];
  if (self != nullptr) observer_ = observer;
  return self;
}

- (const std::shared_ptr<KeyValueObserver>&)observer {
  return observer_;
}

- (void)observeValueForKeyPath:(NSString*)keyPath
                      ofObject:(::id)object
                        change:(NSDictionary*)change
                       context:(void*)context {
  const auto view = platform::viewOfDyingNative(object);
  const auto observer = observer_;
  observer->observeValueForKeyPath(platform::standardString(keyPath), *view, context);
}

@end

namespace platform {
namespace {

// The listeners of observers that have registrations.
class Listeners {
 public:
  static Listeners& all() {
    static auto* listeners = new Listeners;
    return *listeners;
  }

  // Returns the observer's listener for one more registration.
  Retained<LWWallpaperListener> add(const std::shared_ptr<KeyValueObserver>& observer) {
    std::lock_guard lock(mutex_);
    Entry& entry = entries_[observer.get()];
    if (entry.registrations++ == 0) {
      entry.listener = Retained<LWWallpaperListener>::adopt(
          [[LWWallpaperListener alloc] initWithObserver:observer]);
    }
    return entry.listener;
  }

  // Returns the observer's listener, or nil if it has no registrations.
  Retained<LWWallpaperListener> find(const KeyValueObserver& observer) const {
    std::lock_guard lock(mutex_);
    const auto at = entries_.find(&observer);
    return at == entries_.end() ? Retained<LWWallpaperListener>() : at->second.listener;
  }

  void remove(const KeyValueObserver& observer) {
    std::lock_guard lock(mutex_);
    const auto at = entries_.find(&observer);
    if (at != entries_.end() && --at->second.registrations == 0) entries_.erase(at);
  }

 private:
  struct Entry {
    Retained<LWWallpaperListener> listener;
    int registrations = 0;
  };
  mutable std::mutex mutex_;
  std::map<const KeyValueObserver*, Entry> entries_;
};

// Releases the listener on the main thread, which may be about to call it. Takes it by value,
// because a block copies only the address of a reference.
void releaseOnMainThread(Retained<LWWallpaperListener> listener) {
  [[::NSOperationQueue mainQueue] addOperationWithBlock:^{
    (void)listener;
  }];
}

}  // namespace

bool swallowingNSException(const std::function<void()>& block) {
  @try {
    block();
    return true;
  } @catch (NSException*) {
    return false;
  }
}

void UIView::addObserver(const std::shared_ptr<KeyValueObserver>& observer,
                         std::string_view keyPath, const void* context) {
  [nativeView(*this) addObserver:Listeners::all().add(observer).get()
                      forKeyPath:nativeString(std::string(keyPath))
                         options:0
                         context:const_cast<void*>(context)];
}

void UIView::removeObserver(const KeyValueObserver& observer, std::string_view keyPath) {
  const auto listener = Listeners::all().find(observer);
  if (listener.get() == nullptr) {
    [NSException raise:@"NSRangeException" format:@"the observer is not registered"];
  }
  [nativeView(*this) removeObserver:listener.get() forKeyPath:nativeString(std::string(keyPath))];
  Listeners::all().remove(observer);
  releaseOnMainThread(listener);
}

// Reads the platform's internal records, for which there is no public interface.
std::shared_ptr<KeyValueObserver> UIView::firstObserver() const {
  NSObject* info = (NSObject*)[nativeView(*this) observationInfo];
  NSArray* observances = [info valueForKey:@"_observances"];
  if ([observances count] == 0) return nullptr;
  ::id observer = [[observances objectAtIndex:0] valueForKey:@"_observer"];
  if (![observer isKindOfClass:[LWWallpaperListener class]]) return nullptr;
  return [(LWWallpaperListener*)observer observer];
}

}  // namespace platform
