#include "platform/display_link.h"

#import <QuartzCore/QuartzCore.h>

#include "platform/ios/retained.h"

// What a link calls. The run loop retains the link, which retains this, until it is invalidated.
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

// It may invalidate its link, which lets go of this.
- (void)fire:(CADisplayLink*)link {
  const auto fire = fire_;
  fire();
}

@end

namespace platform {

struct CADisplayLink::Impl {
  Retained<::CADisplayLink> native;
};

CADisplayLink::CADisplayLink(std::shared_ptr<Impl> impl) : impl_(std::move(impl)) {}
CADisplayLink::~CADisplayLink() = default;

std::shared_ptr<CADisplayLink> CADisplayLink::displayLinkWithTarget(Target target) {
  auto impl = std::make_shared<Impl>();
  // Keeps a link alive that nobody holds any more but the run loop.
  const auto fire = [impl, target = std::move(target)] { target(CADisplayLink(impl)); };
  const auto native =
      Retained<LWDisplayLinkTarget>::adopt([[LWDisplayLinkTarget alloc] initWithFunction:fire]);
  impl->native =
      Retained<::CADisplayLink>([::CADisplayLink displayLinkWithTarget:native.get()
                                                              selector:@selector(fire:)]);
  return std::shared_ptr<CADisplayLink>(new CADisplayLink(std::move(impl)));
}

void CADisplayLink::setFrameInterval(int refreshes) {
  [impl_->native.get() setFrameInterval:refreshes];
}

void CADisplayLink::addToMainRunLoop() {
  [impl_->native.get() addToRunLoop:[NSRunLoop mainRunLoop] forMode:@"kCFRunLoopCommonModes"];
}

// Lets go of the target, and so of what keeps the link alive.
void CADisplayLink::invalidate() {
  const Retained<::CADisplayLink> native = impl_->native;
  [native.get() invalidate];
}

std::chrono::duration<double> CADisplayLink::duration() const {
  return std::chrono::duration<double>([impl_->native.get() duration]);
}

}  // namespace platform
