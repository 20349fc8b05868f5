// An extension for the home screen that `lumora run --library badge.so` starts. It makes the dock
// half as high again, puts a red badge on the wallpaper, and hides or shows the badge whenever
// "com.example.badge.toggle" is posted.

#include <memory>

#include <platform/notify_center.h>
#include <platform/objc_runtime.h>
#include <platform/view.h>

namespace {

using namespace platform;

// A class method of SBDockView: the height of the dock in points.
CGFloat (*previousHeight)(id self, SEL selector) = nullptr;

CGFloat higherDock(id self, SEL selector) {
  return previousHeight(self, selector) * 1.5;
}

UIView& badge() {
  static const auto view = std::make_shared<UIView>();
  return *view;
}

// Returns the wallpaper of both screens, or nullptr if each screen has its own.
std::shared_ptr<UIView> sharedWallpaper() {
  const id controller =
      objc_msgSend<id>(classObject(objc_getClass("SBWallpaperController")), "sharedInstance");
  const Ivar variable =
      class_getInstanceVariable(object_getClass(controller), "_sharedWallpaperView");
  return viewAtOffset(controller, ivar_getOffset(variable));
}

void showBadge() {
  badge().setTag(4711);
  badge().setFrame({20, 630, 40, 40});
  badge().setBackgroundColor({1, 0, 0, 1});
  if (const auto wallpaper = sharedWallpaper()) wallpaper->addSubview(badge().shared_from_this());
}

// A method of SpringBoard, which the home screen sends itself when everything else is set up.
void (*previousLaunch)(id self, SEL selector, id application) = nullptr;

void launch(id self, SEL selector, id application) {
  previousLaunch(self, selector, application);
  showBadge();
}

template <typename Method>
void hook(Class cls, const char* selector, Method* replacement, Method** previous) {
  MSHookMessageEx(cls, sel_registerName(selector), reinterpret_cast<IMP>(replacement),
                  reinterpret_cast<IMP*>(previous));
}

// Runs when the library is loaded, before the home screen launches.
__attribute__((constructor)) void initialize() {
  const Class dock = object_getClass(classObject(objc_getClass("SBDockView")));
  hook(dock, "defaultHeight", higherDock, &previousHeight);
  hook(objc_getClass("SpringBoard"), "applicationDidFinishLaunching:", launch, &previousLaunch);
  static auto* notifications = new DarwinNotifyCenter;
  notifications->addObserver(nullptr, "com.example.badge.toggle",
                             [](const std::string&) { badge().setHidden(!badge().hidden()); });
}

}  // namespace
