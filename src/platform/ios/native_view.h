// The platform's object behind a view, and the way back. Main thread, where the portable view asks
// for it.
#pragma once

#include <memory>

#import <UIKit/UIKit.h>

#include "platform/ios/retained.h"
#include "platform/view.h"

// The animated view in the host's tree. It stands for a portable one, which retains it; while it
// has a superview it retains the portable one in turn, as a superview retains its subviews.
@interface LWGIFView : UIView {
 @private
  platform::UIView* portable_;
  std::shared_ptr<platform::UIView> portableInTree_;
}
// nullptr once the portable view is gone.
@property(nonatomic, assign) platform::UIView* portable;
@end

namespace platform {

struct UIView::Impl {
  Retained<::UIView> native;
  // Instead of native for a view that is being deallocated and can no longer be retained.
  ::UIView* dying = nullptr;

  ::UIView* view() const { return dying == nullptr ? native.get() : dying; }
};

inline ::UIView* nativeView(const UIView& view) {
  return view.impl().view();
}

// The portable view that this one stands for, else a new one that stands for it; nullptr of nil.
std::shared_ptr<UIView> viewOfNative(::UIView* native);

// The same without retaining it.
std::shared_ptr<UIView> viewOfDyingNative(::UIView* native);

}  // namespace platform
