#include "platform/display_link.h"

#include <mutex>
#include <utility>

#import <QuartzCore/QuartzCore.h>

#include "platform/ios/retained.h"

// The target of a link. The run loop retains the link, which retains this, until it is invalidated.
@interface LWDisplayLinkTarget : NSObject {
 @private
  std::function<void()> fire_;
}
- (instancetype)initWithFunction:(std::function<void()>)fire;
- (void)fire:(CADisplayLink*)link;
@end

@implementation LWDisplayLinkTarget

- (instancetype)initWithFunction:(std::function<void()>)fire {
  self = [super init];
  if (self != nullptr) fire_ = std::move(fire);
  return self;
}

// Retains itself, because the function may invalidate the link, which releases this.
- (void)fire:(CADisplayLink*)link {
  [[self retain] autorelease];
  fire_();
}

@end

namespace platform {

// Holds nil once the link has been invalidated, which any thread may do.
struct CADisplayLink::Impl {
  Retained<::CADisplayLink> get() {
    std::lock_guard lock(mutex);
    return native;
  }
  Retained<::CADisplayLink> take() {
    std::lock_guard lock(mutex);
    return std::exchange(native, {});
  }
  std::mutex mutex;
  Retained<::CADisplayLink> native;
};

CADisplayLink::CADisplayLink(std::shared_ptr<Impl> impl) : impl_(std::move(impl)) {}
CADisplayLink::~CADisplayLink() = default;

std::shared_ptr<CADisplayLink> CADisplayLink::displayLinkWithTarget(Target target) {
  auto impl = std::make_shared<Impl>();
  // Keeps the link alive if only the run loop retains it.
  const auto fire = [impl, target = std::move(target)] { target(CADisplayLink(impl)); };
  const auto native =
      Retained<LWDisplayLinkTarget>::adopt([[LWDisplayLinkTarget alloc] initWithFunction:fire]);
  impl->native =
      Retained<::CADisplayLink>([::CADisplayLink displayLinkWithTarget:native.get()
                                                              selector:@selector(fire:)]);
  return std::shared_ptr<CADisplayLink>(new CADisplayLink(std::move(impl)));
}

void CADisplayLink::setFrameInterval(int refreshes) {
  [impl_->get().get() setFrameInterval:refreshes];
}

void CADisplayLink::addToMainRunLoop() {
  [impl_->get().get() addToRunLoop:[NSRunLoop mainRunLoop] forMode:NSRunLoopCommonModes];
}

// The display of a device refreshes anyway.
void CADisplayLink::skipRefreshes(int /*count*/) const {}

int CADisplayLink::skippedRefreshes() const {
  return 0;
}

// Releases the native link, so that link and target do not retain each other, even if the native
// link keeps its target.
void CADisplayLink::invalidate() {
  [impl_->take().get() invalidate];
}

std::chrono::duration<double> CADisplayLink::duration() const {
  return std::chrono::duration<double>([impl_->get().get() duration]);
}

}  // namespace platform
