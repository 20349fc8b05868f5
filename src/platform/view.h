// A view of the host's tree. The getters, setTag and the functions about observers work on any
// thread, all others on the main thread. A superview retains its subviews; a subview does not
// retain its superview. A function fails only where its comment says so.
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

// The platform's integers for how an image fills its view.
enum class UIViewContentMode { ScaleToFill = 0, ScaleAspectFit = 1, ScaleAspectFill = 2 };

constexpr unsigned UIViewAutoresizingFlexibleWidth = 2;
constexpr unsigned UIViewAutoresizingFlexibleHeight = 16;

class UIView : public std::enable_shared_from_this<UIView> {
 public:
  // Public only so that all files of the backend can use it. Only the backend defines and creates
  // it.
  struct Impl;
  UIView();
  explicit UIView(std::unique_ptr<Impl> impl);
  virtual ~UIView();
  UIView(const UIView&) = delete;
  UIView& operator=(const UIView&) = delete;

  // Returns the view of a host object, or nullptr for nil. Requires an object that is a view. The
  // result does not keep the object alive, because the object may be in the middle of its dealloc,
  // and is valid until that dealloc has run.
  static std::shared_ptr<UIView> viewOfObject(id object);
  // Returns the host object of this view, not retained.
  id object() const;

  // Adds view in front of the other subviews, and removes it from its old superview, if any.
  // Requires a view that is not nullptr and does not contain this one.
  void addSubview(const std::shared_ptr<UIView>& view);
  // Does nothing if there is no superview. May destroy the view if only the superview retains it.
  void removeFromSuperview();
  // Does nothing if view is not a subview of this one.
  void bringSubviewToFront(const std::shared_ptr<UIView>& view);
  // Returns nullptr if there is none.
  std::shared_ptr<UIView> superview() const;
  // Returns the subviews from back to front.
  std::vector<std::shared_ptr<UIView>> subviews() const;

  // Sets position and size in the superview's coordinates. Subviews follow a change of size as
  // their autoresizing masks say.
  void setFrame(CGRect frame);
  CGRect frame() const;
  void setTag(int tag);
  int tag() const;
  // Calls the observers of "hidden" before it returns.
  void setHidden(bool hidden);
  bool hidden() const;
  // Sets the opacity of the view with its subviews, from 0 (transparent) to 1. Values outside of
  // this range are drawn as the nearest value in it.
  void setAlpha(CGFloat alpha);
  CGFloat alpha() const;
  // Promises that the content has no transparent pixels, which may make drawing faster.
  void setOpaque(bool opaque);
  void setClipsToBounds(bool clips);
  bool clipsToBounds() const;
  void setBackgroundColor(UIColor color);
  UIColor backgroundColor() const;
  void setAutoresizingMask(unsigned mask);
  virtual void setContentMode(UIViewContentMode mode);
  UIViewContentMode contentMode() const;

  // Registers an observer. Requires "hidden" as keyPath. Registering an observer twice makes two
  // registrations. The registration retains the observer; context is passed to the observer
  // unchanged and must be valid as long as the registration.
  void addObserver(const std::shared_ptr<KeyValueObserver>& observer, std::string_view keyPath,
                   const void* context);
  // Removes the newest registration of observer. Requires "hidden" as keyPath. Raises NSException
  // (see swallowingNSException) if there is none.
  void removeObserver(const KeyValueObserver& observer, std::string_view keyPath);
  // Returns the observer that was registered first. Returns nullptr if there is none or if it was
  // not registered through addObserver. Other observers are not examined: they may belong to other
  // programs and no longer exist.
  std::shared_ptr<KeyValueObserver> firstObserver() const;

  const Impl& impl() const { return *impl_; }

  // Adds what this view is and shows to description. Main thread.
  virtual void describe(ViewDescription& description) const;

 private:
  std::unique_ptr<Impl> impl_;
};

}  // namespace platform
