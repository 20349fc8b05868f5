#include "platform/key_value_observing.h"

#include <map>
#include <memory>
#include <mutex>

#import "platform/ios/native_string.h"
#import "platform/ios/native_view.h"

using platform::KeyValueObserver;

// The platform does not retain its observers: each is retained for its registration by hand, and
// one that outlives the observed view stays for good.
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
  observer_->observeValueForKeyPath(platform::standardString(keyPath), *view, context);
}

@end

namespace platform {
namespace {

// The listeners of observers that were ever registered and not removed since.
class Listeners {
 public:
  static Listeners& all() {
    static auto* listeners = new Listeners;
    return *listeners;
  }

  LWWallpaperListener* listenerOf(const std::shared_ptr<KeyValueObserver>& observer) {
    std::lock_guard lock(mutex_);
    auto& listener = listeners_[observer.get()];
    if (listener.get() == nullptr) {
      listener = Retained<LWWallpaperListener>::adopt(
          [[LWWallpaperListener alloc] initWithObserver:observer]);
    }
    return listener.get();
  }

  // nil if it has none.
  Retained<LWWallpaperListener> find(const KeyValueObserver& observer) const {
    std::lock_guard lock(mutex_);
    const auto at = listeners_.find(&observer);
    return at == listeners_.end() ? Retained<LWWallpaperListener>() : at->second;
  }

  void remove(const KeyValueObserver& observer) {
    std::lock_guard lock(mutex_);
    listeners_.erase(&observer);
  }

 private:
  mutable std::mutex mutex_;
  std::map<const KeyValueObserver*, Retained<LWWallpaperListener>> listeners_;
};

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
  [nativeView(*this) addObserver:Listeners::all().listenerOf(observer)
                      forKeyPath:nativeString(std::string(keyPath))
                         options:0
                         context:const_cast<void*>(context)];
}

void UIView::removeObserver(const KeyValueObserver& observer, std::string_view keyPath) {
  const auto listener = Listeners::all().find(observer);
  if (listener.get() == nullptr) {
    [NSException raise:NSRangeException format:@"the observer is not registered"];
  }
  [nativeView(*this) removeObserver:listener.get() forKeyPath:nativeString(std::string(keyPath))];
  Listeners::all().remove(observer);
}

// Out of the platform's own bookkeeping, which has no public way in.
std::vector<std::shared_ptr<KeyValueObserver>> UIView::observances() const {
  std::vector<std::shared_ptr<KeyValueObserver>> observers;
  NSObject* info = (NSObject*)[nativeView(*this) observationInfo];
  NSArray* observances = [info valueForKey:@"_observances"];
  const NSUInteger count = [observances count];
  for (NSUInteger index = 0; index < count; ++index) {
    ::id observer = [[observances objectAtIndex:index] valueForKey:@"_observer"];
    const bool isOwn = [observer isKindOfClass:[LWWallpaperListener class]];
    observers.push_back(isOwn ? [(LWWallpaperListener*)observer observer] : nullptr);
  }
  return observers;
}

}  // namespace platform
