#include "platform/view.h"

#include <algorithm>
#include <utility>

#include "platform/linux/main_loop/run_loop.h"
#include "platform/linux/views/main_thread_check.h"
#include "platform/linux/views/view.h"
#include "platform/linux/views/view_class.h"

namespace platform {
using namespace backend;

namespace {

// Called after every change of what the screen shows.
void noteChange() {
  expectMainThread();
  RunLoop::main().setNeedsDisplay();
}

// Stores a value and requests display.
template <typename Value>
void store(Value& field, const Value& value) {
  {
    std::lock_guard lock(treeMutex());
    field = value;
  }
  noteChange();
}

}  // namespace

std::mutex& backend::treeMutex() {
  static auto* mutex = new std::mutex;
  return *mutex;
}

std::shared_ptr<UIView> UIView::Impl::unlink(UIView& view) {
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

void UIView::Impl::resize(CGRect newFrame) {
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
  store(impl_->hidden, hidden);
  for (const Observance& observance : Impl::load(impl_->observances)) {
    observance.observer->observeValueForKeyPath("hidden", *this, observance.context);
  }
}

bool UIView::hidden() const {
  return Impl::load(impl_->hidden);
}

void UIView::setAlpha(CGFloat alpha) {
  store(impl_->alpha, alpha);
}

CGFloat UIView::alpha() const {
  return Impl::load(impl_->alpha);
}

// This backend always blends.
void UIView::setOpaque(bool /*opaque*/) {}

void UIView::setClipsToBounds(bool clips) {
  store(impl_->clipsToBounds, clips);
}

bool UIView::clipsToBounds() const {
  return Impl::load(impl_->clipsToBounds);
}

void UIView::setBackgroundColor(UIColor color) {
  store(impl_->background, color);
}

UIColor UIView::backgroundColor() const {
  return Impl::load(impl_->background);
}

void UIView::setAutoresizingMask(unsigned mask) {
  store(impl_->autoresizingMask, mask);
}

void UIView::setContentMode(UIViewContentMode mode) {
  store(impl_->contentMode, mode);
}

UIViewContentMode UIView::contentMode() const {
  return Impl::load(impl_->contentMode);
}

void UIView::describe(ViewDescription& description) const {
  description.addText("class", impl_->object.isa->name);
  description.addInteger("tag", tag());
  description.addFlag("hidden", hidden());
}

}  // namespace platform
