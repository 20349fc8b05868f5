#include "host/home_screen/wallpaper_controller.h"

#include <array>

#include "platform/linux/views/view_class.h"

namespace host {
namespace {

using platform::id;
using platform::SEL;
using platform::UIView;
using platform::backend::StrongIvar;

}  // namespace

// The instance for the object run-time, which finds its variables by offset.
struct WallpaperController::Object : objc_object {
  StrongIvar sharedView;
  StrongIvar lockscreenView;
  StrongIvar homescreenView;

  std::array<StrongIvar*, 3> views() { return {&sharedView, &lockscreenView, &homescreenView}; }

  std::ptrdiff_t offsetOf(const StrongIvar& variable) const {
    return reinterpret_cast<const char*>(&variable) -
           reinterpret_cast<const char*>(static_cast<const objc_object*>(this));
  }

  static id sharedInstance(id /*self*/, SEL /*selector*/) { return instance().object_.get(); }
  static void updateShared(id /*self*/, SEL /*selector*/) { instance().updateShared(); }
  static void updateSeparate(id /*self*/, SEL /*selector*/) { instance().updateSeparate(); }
};

WallpaperController::WallpaperController() : object_(std::make_unique<Object>()) {}

WallpaperController& WallpaperController::instance() {
  static auto* controller = new WallpaperController;
  return *controller;
}

void WallpaperController::registerClasses() {
  platform::backend::registerClass("SBFWallpaperView", platform::backend::viewClass());
  platform::Class cls = platform::backend::registerClass("SBWallpaperController", nullptr);
  platform::backend::addClassMethod(cls, "sharedInstance", Object::sharedInstance);
  platform::backend::addMethod(cls, "_updateSharedWallpaper", Object::updateShared);
  platform::backend::addMethod(cls, "_updateSeparateWallpaper", Object::updateSeparate);
  Object& object = *instance().object_;
  object.isa = cls;
  platform::backend::addInstanceVariable(cls, "_sharedWallpaperView",
                                         object.offsetOf(object.sharedView));
  platform::backend::addInstanceVariable(cls, "_lockscreenWallpaperView",
                                         object.offsetOf(object.lockscreenView));
  platform::backend::addInstanceVariable(cls, "_homescreenWallpaperView",
                                         object.offsetOf(object.homescreenView));
}

void WallpaperController::start(const std::shared_ptr<UIView>& container) {
  container_ = container;
  updateShared();
}

void WallpaperController::layOut(platform::CGSize screen) {
  screen_ = screen;
  for (StrongIvar* variable : object_->views()) {
    if (auto view = variable->load()) view->setFrame({0, 0, screen.width, screen.height});
  }
}

void WallpaperController::setVisibility(WallpaperVisibility visibility) {
  visibility_ = visibility;
  applyVisibility(object_->sharedView, sharedIsVisible());
  applyVisibility(object_->lockscreenView, visibility.onLockScreen);
  applyVisibility(object_->homescreenView, visibility.onHomeScreen);
}

void WallpaperController::reportVisibility() {
  for (StrongIvar* variable : object_->views()) {
    if (auto view = variable->load()) view->setHidden(view->hidden());
  }
}

void WallpaperController::applyVisibility(StrongIvar& variable, bool isVisible) const {
  auto view = variable.load();
  if (view && view->hidden() == isVisible) view->setHidden(!isVisible);
}

std::shared_ptr<const Glimpse> WallpaperController::follow(const WallpaperView::Choice& choice,
                                                           double scale) const {
  for (StrongIvar* variable : object_->views()) {
    const auto view = std::dynamic_pointer_cast<WallpaperView>(variable->load());
    if (view && !view->hidden()) return view->follow(choice, scale);
  }
  return nullptr;
}

std::shared_ptr<UIView> WallpaperController::makeView(artwork::Still still, bool isVisible) {
  auto view = platform::backend::makeViewOfClass<WallpaperView>(
      platform::objc_getClass("SBFWallpaperView"), still);
  view->setFrame({0, 0, screen_.width, screen_.height});
  view->setHidden(!isVisible);
  container_->addSubview(view);
  return view;
}

void WallpaperController::replace(StrongIvar& variable, const std::shared_ptr<UIView>& view) {
  auto old = variable.load();
  variable.store(view);
  if (old) old->removeFromSuperview();
}

void WallpaperController::updateShared() {
  if (object_->sharedView.load()) return;
  replace(object_->sharedView, makeView(artwork::Still::Shared, sharedIsVisible()));
  replace(object_->lockscreenView, nullptr);
  replace(object_->homescreenView, nullptr);
}

void WallpaperController::updateSeparate() {
  if (object_->lockscreenView.load()) return;
  replace(object_->lockscreenView, makeView(artwork::Still::LockScreen, visibility_.onLockScreen));
  replace(object_->homescreenView, makeView(artwork::Still::HomeScreen, visibility_.onHomeScreen));
  replace(object_->sharedView, nullptr);
}

}  // namespace host
