// The native object of a view, and the view of a native object. The threads are those of
// platform/view.h.
#pragma once

#include <memory>

#import <UIKit/UIKit.h>

#include "platform/ios/retained.h"
#include "platform/view.h"

// The native object of a view that the library creates. The portable view retains it; while it has
// a superview, it retains the portable view, as a superview retains its subviews. It has the name
// of the library's view class, because it is the view that other code meets in the host's tree.
@interface LWGIFView : UIView {
 @private
  platform::UIView* portable_;
  std::shared_ptr<platform::UIView> portableInTree_;
}
// nullptr once the portable view has been destroyed.
@property(nonatomic, assign) platform::UIView* portable;
@end

namespace platform {

struct UIView::Impl {
  Retained<::UIView> native;
  // Used instead of native for a view that may be in its dealloc and so must not be retained.
  ::UIView* dying = nullptr;

  ::UIView* view() const { return dying == nullptr ? native.get() : dying; }
};

inline ::UIView* nativeView(const UIView& view) {
  return view.impl().view();
}

// Returns the portable view of a native one: its own, if the library created it, otherwise a new
// one, which retains it. Returns nullptr for nil.
std::shared_ptr<UIView> viewOfNative(::UIView* native);

// Returns a new portable view that does not retain the native one.
std::shared_ptr<UIView> viewOfDyingNative(::UIView* native);

}  // namespace platform
