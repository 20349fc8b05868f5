#include "platform/view.h"

#import "platform/ios/native_view.h"

@implementation LWGIFView

@synthesize portable = portable_;

- (void)didMoveToSuperview {
  [super didMoveToSuperview];
  // Releasing the portable view may release this one.
  [[self retain] autorelease];
  const bool isInTree = portable_ != nullptr && [self superview] != nullptr;
  portableInTree_ = isInTree ? portable_->weak_from_this().lock() : nullptr;
}

@end

namespace platform {

UIView::UIView()
    : UIView(std::make_unique<Impl>(
          Impl{Retained<::UIView>::adopt([[LWGIFView alloc] init]), nullptr})) {
  [(LWGIFView*)nativeView(*this) setPortable:this];
}

UIView::UIView(std::unique_ptr<Impl> impl) : impl_(std::move(impl)) {}

UIView::~UIView() {
  ::UIView* native = impl_->native.get();
  if (![native isKindOfClass:[LWGIFView class]]) return;
  if ([(LWGIFView*)native portable] == this) [(LWGIFView*)native setPortable:nullptr];
}

std::shared_ptr<UIView> viewOfNative(::UIView* native) {
  if (native == nullptr) return nullptr;
  if ([native isKindOfClass:[LWGIFView class]]) {
    UIView* portable = [(LWGIFView*)native portable];
    if (auto view = portable == nullptr ? nullptr : portable->weak_from_this().lock()) return view;
  }
  return std::make_shared<UIView>(
      std::make_unique<UIView::Impl>(UIView::Impl{Retained<::UIView>(native), nullptr}));
}

std::shared_ptr<UIView> viewOfDyingNative(::UIView* native) {
  return std::make_shared<UIView>(
      std::make_unique<UIView::Impl>(UIView::Impl{Retained<::UIView>(), native}));
}

std::shared_ptr<UIView> UIView::viewOfObject(id object) {
  return object == nullptr ? nullptr : viewOfDyingNative((::UIView*)object);
}

id UIView::object() const {
  return (id)nativeView(*this);
}

void UIView::addSubview(const std::shared_ptr<UIView>& view) {
  [nativeView(*this) addSubview:nativeView(*view)];
}

void UIView::removeFromSuperview() {
  [nativeView(*this) removeFromSuperview];
}

void UIView::bringSubviewToFront(const std::shared_ptr<UIView>& view) {
  [nativeView(*this) bringSubviewToFront:nativeView(*view)];
}

std::shared_ptr<UIView> UIView::superview() const {
  return viewOfNative([nativeView(*this) superview]);
}

std::vector<std::shared_ptr<UIView>> UIView::subviews() const {
  std::vector<std::shared_ptr<UIView>> views;
  NSArray* natives = [nativeView(*this) subviews];
  const NSUInteger count = [natives count];
  for (NSUInteger index = 0; index < count; ++index) {
    views.push_back(viewOfNative([natives objectAtIndex:index]));
  }
  return views;
}

void UIView::setFrame(CGRect frame) {
  const ::CGRect native = {{frame.x, frame.y}, {frame.width, frame.height}};
  [nativeView(*this) setFrame:native];
}

CGRect UIView::frame() const {
  const ::CGRect frame = [nativeView(*this) frame];
  return {frame.origin.x, frame.origin.y, frame.size.width, frame.size.height};
}

void UIView::setTag(int tag) {
  [nativeView(*this) setTag:tag];
}

int UIView::tag() const {
  return static_cast<int>([nativeView(*this) tag]);
}

void UIView::setHidden(bool hidden) {
  [nativeView(*this) setHidden:hidden];
}

bool UIView::hidden() const {
  return [[nativeView(*this) valueForKey:@"hidden"] boolValue];
}

void UIView::setAlpha(CGFloat alpha) {
  [nativeView(*this) setAlpha:alpha];
}

CGFloat UIView::alpha() const {
  return [nativeView(*this) alpha];
}

void UIView::setOpaque(bool opaque) {
  [nativeView(*this) setOpaque:opaque];
}

void UIView::setClipsToBounds(bool clips) {
  [nativeView(*this) setClipsToBounds:clips];
}

bool UIView::clipsToBounds() const {
  return [nativeView(*this) clipsToBounds];
}

void UIView::setBackgroundColor(UIColor color) {
  [nativeView(*this) setBackgroundColor:[::UIColor colorWithRed:static_cast<CGFloat>(color.red)
                                                          green:static_cast<CGFloat>(color.green)
                                                           blue:static_cast<CGFloat>(color.blue)
                                                          alpha:static_cast<CGFloat>(color.alpha)]];
}

UIColor UIView::backgroundColor() const {
  CGFloat red = 0;
  CGFloat green = 0;
  CGFloat blue = 0;
  CGFloat alpha = 0;
  [[nativeView(*this) backgroundColor] getRed:&red green:&green blue:&blue alpha:&alpha];
  return {red, green, blue, alpha};
}

void UIView::setAutoresizingMask(unsigned mask) {
  [nativeView(*this) setAutoresizingMask:mask];
}

void UIView::setContentMode(UIViewContentMode mode) {
  [nativeView(*this) setContentMode:static_cast<::UIViewContentMode>(mode)];
}

UIViewContentMode UIView::contentMode() const {
  return static_cast<UIViewContentMode>([nativeView(*this) contentMode]);
}

void UIView::describe(ViewDescription& description) const {
  description.addInteger("tag", tag());
  description.addFlag("hidden", hidden());
}

}  // namespace platform
