// A view of the host's tree. Tree and geometry change on the main thread; the getters, setTag and
// the observer registrations work on any thread. A superview retains its subviews, never the
// reverse. Nothing here fails unless said.
#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "platform/geometry.h"
#include "platform/key_value_observing.h"
#include "platform/objc_runtime.h"
#include "platform/view_description.h"

namespace platform {

struct UIColor {
  double red = 0;
  double green = 0;
  double blue = 0;
  double alpha = 0;
  static UIColor clearColor() { return {}; }
};

// The platform's integers for how a picture fills its view.
enum class UIViewContentMode { ScaleToFill = 0, ScaleAspectFit = 1, ScaleAspectFill = 2 };

constexpr unsigned UIViewAutoresizingFlexibleWidth = 2;
constexpr unsigned UIViewAutoresizingFlexibleHeight = 16;

class UIView : public std::enable_shared_from_this<UIView> {
 public:
  // Public so that the backend's files can reach it; defined, and made, by the backend only.
  struct Impl;
  UIView();
  explicit UIView(std::unique_ptr<Impl> impl);
  virtual ~UIView();
  UIView(const UIView&) = delete;
  UIView& operator=(const UIView&) = delete;

  // Returns the view behind a host object, nullptr for nil. The pointer may own nothing, as the
  // object may be dying: it is valid until the object's own dealloc has run.
  static std::shared_ptr<UIView> viewOfObject(id object);
  id object() const;

  void addSubview(const std::shared_ptr<UIView>& view);
  void removeFromSuperview();
  // Does nothing if view is not a subview of this one.
  void bringSubviewToFront(const std::shared_ptr<UIView>& view);
  std::shared_ptr<UIView> superview() const;
  // Back to front.
  std::vector<std::shared_ptr<UIView>> subviews() const;

  void setFrame(CGRect frame);
  CGRect frame() const;
  void setTag(int tag);
  int tag() const;
  void setHidden(bool hidden);
  bool hidden() const;
  // 0 (transparent) to 1; what is outside is drawn as the nearer of the two.
  void setAlpha(CGFloat alpha);
  CGFloat alpha() const;
  void setOpaque(bool opaque);
  void setClipsToBounds(bool clips);
  bool clipsToBounds() const;
  void setBackgroundColor(UIColor color);
  UIColor backgroundColor() const;
  void setAutoresizingMask(unsigned mask);
  virtual void setContentMode(UIViewContentMode mode);
  UIViewContentMode contentMode() const;

  // Requires "hidden" as keyPath. Registering the same observer twice makes two registrations. The
  // view retains the observer; context is passed on as it is and must live as long.
  void addObserver(const std::shared_ptr<KeyValueObserver>& observer, std::string_view keyPath,
                   const void* context);
  // Removes the newest registration of observer. Raises NSException (see swallowingNSException) if
  // there is none.
  void removeObserver(const KeyValueObserver& observer, std::string_view keyPath);
  // The observer registered first; nullptr if there is none, or if it is not this system's. No
  // other is looked at: whoever registered it may be gone.
  std::shared_ptr<KeyValueObserver> firstObserver() const;

  const Impl& impl() const { return *impl_; }

  // Tells a debugger what this view is and shows. Main thread.
  virtual void describe(ViewDescription& description) const;

 private:
  std::unique_ptr<Impl> impl_;
};

}  // namespace platform
