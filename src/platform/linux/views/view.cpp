#include "platform/view.h"

#include <algorithm>
#include <exception>
#include <mutex>

#include "platform/linux/main_loop/run_loop.h"
#include "platform/linux/views/class_table.h"
#include "platform/linux/views/main_thread_check.h"
#include "platform/linux/views/view_observers.h"

namespace platform {
namespace {

// The platform's exception class; only this backend raises and catches it.
class NSException : public std::exception {
 public:
  const char* what() const noexcept override { return "NSRangeException"; }
};

// One lock for the whole tree: it is small, and a change often concerns two views.
std::mutex& treeMutex() {
  static auto* mutex = new std::mutex;
  return *mutex;
}

struct ViewObject : objc_object {
  UIView* view = nullptr;
};

void deallocView(id self, SEL) {
  delete static_cast<ViewObject*>(self)->view;
}

// After every change of what the screen shows.
void noteChange() {
  expectMainThread();
  RunLoop::main().setNeedsDisplay();
}

}  // namespace

bool swallowingNSException(const std::function<void()>& block) {
  try {
    block();
    return true;
  } catch (const NSException&) {
    return false;
  }
}

Class viewClass() {
  static Class cls = [] {
    Class made = registerClass("UIView", nullptr);
    addMethod(made, "dealloc", deallocView);
    return made;
  }();
  return cls;
}

void setClassOfView(UIView& view, Class cls) {
  view.object()->isa = cls;
}

struct Observance {
  std::shared_ptr<KeyValueObserver> observer;
  const void* context;
};

struct UIView::Impl {
  ViewObject object;
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
  std::vector<Observance> observances;

  // Unlinks view from its superview and hands over the reference, to be let go of unlocked.
  static std::shared_ptr<UIView> unlink(UIView& view) {
    UIView* parent = view.impl_->superview;
    if (parent == nullptr) return nullptr;
    auto& siblings = parent->impl_->subviews;
    auto at = std::find_if(siblings.begin(), siblings.end(),
                           [&view](const auto& sibling) { return sibling.get() == &view; });
    std::shared_ptr<UIView> unlinked = std::move(*at);
    siblings.erase(at);
    view.impl_->superview = nullptr;
    return unlinked;
  }

  void resize(CGRect newFrame) {
    const CGFloat widthChange = newFrame.width - frame.width;
    const CGFloat heightChange = newFrame.height - frame.height;
    frame = newFrame;
    for (const auto& subview : subviews) {
      Impl& child = *subview->impl_;
      CGRect follow = child.frame;
      if (child.autoresizingMask & UIViewAutoresizingFlexibleWidth) follow.width += widthChange;
      if (child.autoresizingMask & UIViewAutoresizingFlexibleHeight) follow.height += heightChange;
      if (!(follow == child.frame)) child.resize(follow);
    }
  }

  // Stores a value and has the screen drawn anew.
  template <typename Value>
  static void store(Value& field, const Value& value) {
    {
      std::lock_guard lock(treeMutex());
      field = value;
    }
    noteChange();
  }

  template <typename Value>
  static Value load(const Value& field) {
    std::lock_guard lock(treeMutex());
    return field;
  }
};

UIView::UIView() : UIView(std::make_unique<Impl>()) {}

UIView::UIView(std::unique_ptr<Impl> impl) : impl_(std::move(impl)) {
  impl_->object.isa = viewClass();
  impl_->object.view = this;
}

UIView::~UIView() {
  std::vector<std::shared_ptr<UIView>> orphans;
  {
    std::lock_guard lock(treeMutex());
    orphans.swap(impl_->subviews);
    for (const auto& orphan : orphans) orphan->impl_->superview = nullptr;
  }
  RunLoop::main().setNeedsDisplay();
}

std::shared_ptr<UIView> UIView::viewOfObject(id object) {
  if (object == nullptr) return nullptr;
  return {std::shared_ptr<void>(), static_cast<ViewObject*>(object)->view};
}

id UIView::object() const {
  return &impl_->object;
}

void UIView::addSubview(const std::shared_ptr<UIView>& view) {
  std::shared_ptr<UIView> unlinked;
  {
    std::lock_guard lock(treeMutex());
    unlinked = Impl::unlink(*view);
    impl_->subviews.push_back(view);
    view->impl_->superview = this;
  }
  noteChange();
}

void UIView::removeFromSuperview() {
  std::shared_ptr<UIView> unlinked;
  {
    std::lock_guard lock(treeMutex());
    unlinked = Impl::unlink(*this);
  }
  noteChange();
}

void UIView::bringSubviewToFront(const std::shared_ptr<UIView>& view) {
  {
    std::lock_guard lock(treeMutex());
    auto& views = impl_->subviews;
    auto at = std::find(views.begin(), views.end(), view);
    if (at == views.end() || std::next(at) == views.end()) return;
    std::rotate(at, std::next(at), views.end());
  }
  noteChange();
}

std::shared_ptr<UIView> UIView::superview() const {
  std::lock_guard lock(treeMutex());
  return impl_->superview == nullptr ? nullptr : impl_->superview->weak_from_this().lock();
}

std::vector<std::shared_ptr<UIView>> UIView::subviews() const {
  std::lock_guard lock(treeMutex());
  return impl_->subviews;
}

void UIView::setFrame(CGRect frame) {
  {
    std::lock_guard lock(treeMutex());
    impl_->resize(frame);
  }
  noteChange();
}

CGRect UIView::frame() const {
  return Impl::load(impl_->frame);
}

void UIView::setTag(int tag) {
  std::lock_guard lock(treeMutex());
  impl_->tag = tag;
}

int UIView::tag() const {
  return Impl::load(impl_->tag);
}

void UIView::setHidden(bool hidden) {
  Impl::store(impl_->hidden, hidden);
  for (const Observance& observance : Impl::load(impl_->observances)) {
    observance.observer->observeValueForKeyPath("hidden", *this, observance.context);
  }
}

bool UIView::hidden() const {
  return Impl::load(impl_->hidden);
}

void UIView::setAlpha(CGFloat alpha) {
  Impl::store(impl_->alpha, alpha);
}

CGFloat UIView::alpha() const {
  return Impl::load(impl_->alpha);
}

// What is drawn here is always blended, so the promise to be opaque changes nothing.
void UIView::setOpaque(bool /*opaque*/) {}

void UIView::setClipsToBounds(bool clips) {
  Impl::store(impl_->clipsToBounds, clips);
}

bool UIView::clipsToBounds() const {
  return Impl::load(impl_->clipsToBounds);
}

void UIView::setBackgroundColor(UIColor color) {
  Impl::store(impl_->background, color);
}

UIColor UIView::backgroundColor() const {
  return Impl::load(impl_->background);
}

void UIView::setAutoresizingMask(unsigned mask) {
  Impl::store(impl_->autoresizingMask, mask);
}

void UIView::setContentMode(UIViewContentMode mode) {
  Impl::store(impl_->contentMode, mode);
}

UIViewContentMode UIView::contentMode() const {
  return Impl::load(impl_->contentMode);
}

void UIView::addObserver(const std::shared_ptr<KeyValueObserver>& observer,
                         std::string_view /*keyPath*/, const void* context) {
  std::lock_guard lock(treeMutex());
  impl_->observances.push_back({observer, context});
}

void UIView::removeObserver(const KeyValueObserver& observer, std::string_view /*keyPath*/) {
  std::shared_ptr<KeyValueObserver> removed;
  std::lock_guard lock(treeMutex());
  auto& observances = impl_->observances;
  auto at = std::find_if(observances.rbegin(), observances.rend(), [&observer](const auto& entry) {
    return entry.observer.get() == &observer;
  });
  if (at == observances.rend()) throw NSException();
  removed = std::move(at->observer);
  observances.erase(std::next(at).base());
}

std::shared_ptr<KeyValueObserver> UIView::firstObserver() const {
  const auto observers = observersOf(*this);
  return observers.empty() ? nullptr : observers.front();
}

std::vector<std::shared_ptr<KeyValueObserver>> observersOf(const UIView& view) {
  std::vector<std::shared_ptr<KeyValueObserver>> observers;
  for (const Observance& entry : UIView::Impl::load(view.impl().observances)) {
    observers.push_back(entry.observer);
  }
  return observers;
}

void UIView::describe(ViewDescription& description) const {
  description.addText("class", impl_->object.isa->name);
  description.addInteger("tag", tag());
  description.addFlag("hidden", hidden());
}

}  // namespace platform
