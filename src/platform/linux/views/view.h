// What a view consists of on this backend, and the lock on it.
#pragma once

#include <memory>
#include <mutex>
#include <vector>

#include "platform/linux/views/objc_runtime.h"
#include "platform/view.h"

namespace platform::backend {

// One lock for the whole tree: it is small, and a change often concerns two views.
std::mutex& treeMutex();

struct ViewObject : objc_object {
  UIView* view = nullptr;
};

// A registration of an observer.
struct Observance {
  std::shared_ptr<KeyValueObserver> observer;
  const void* context;
};

}  // namespace platform::backend

namespace platform {

// All fields are read and written with the tree locked.
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

  // Takes the view out of its superview's list and returns the superview's reference, which the
  // caller drops after unlocking: it may be the last one.
  static std::shared_ptr<UIView> unlink(UIView& view);
  // Changes the frame and, by their masks, those of the subviews.
  void resize(CGRect newFrame);

  template <typename Value>
  static Value load(const Value& field) {
    std::lock_guard lock(backend::treeMutex());
    return field;
  }
};

}  // namespace platform
