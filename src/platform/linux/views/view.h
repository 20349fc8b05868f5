// The contents of a view on this backend, and the lock that protects them.
#pragma once

#include <memory>
#include <mutex>
#include <vector>

#include "platform/linux/views/objc_runtime.h"
#include "platform/view.h"

namespace platform::backend {

// Returns the lock of the whole tree. One is enough: the tree is small, and many changes affect two
// views.
std::mutex& treeMutex();

struct ViewObject : objc_object {
  UIView* view = nullptr;
};

// The registration of an observer.
struct Observance {
  std::shared_ptr<KeyValueObserver> observer;
  const void* context;
};

}  // namespace platform::backend

namespace platform {

// All fields except object are read and written with treeMutex locked.
struct UIView::Impl {
  backend::ViewObject object;
  CGRect frame;
  int tag = 0;
  bool hidden = false;
  bool clipsToBounds = false;
  CGFloat alpha = 1;
  UIColor background;
  unsigned autoresizingMask = 0;
  UIViewContentMode contentMode = UIViewContentMode::ScaleToFill;
  UIView* superview = nullptr;
  std::vector<std::shared_ptr<UIView>> subviews;
  std::vector<backend::Observance> observances;

  // Removes the view from its superview, and returns the superview's reference to it, or nullptr if
  // there is no superview. The caller must release the reference after unlocking: it may be the
  // last one. Requires the lock.
  static std::shared_ptr<UIView> unlink(UIView& view);
  // Changes the frame and, following their autoresizing masks, those of the subviews. Requires the
  // lock.
  void resize(CGRect newFrame);

  // Returns a copy of the field, which it reads with the tree locked.
  template <typename Value>
  static Value load(const Value& field) {
    std::lock_guard lock(backend::treeMutex());
    return field;
  }
};

}  // namespace platform
