#include "hooks/hook_table.h"

#include "hooks/dock_height.h"
#include "hooks/launch.h"
#include "hooks/rotation.h"
#include "hooks/wallpaper_view_dealloc.h"
#include "platform/objc_runtime.h"

namespace lumora {
namespace {

using platform::Class;
using platform::IMP;
using platform::objc_getClass;
using platform::sel_registerName;

template <typename Method>
void replaceMethod(Class cls, const char* selector, Method* replacement, Method** previous) {
  platform::MSHookMessageEx(cls, sel_registerName(selector), reinterpret_cast<IMP>(replacement),
                            reinterpret_cast<IMP*>(previous));
}

Class metaclassOf(const char* name) {
  return platform::object_getClass(platform::classObject(objc_getClass(name)));
}

}  // namespace

void installHooks() {
  replaceMethod(objc_getClass("SBFWallpaperView"), "dealloc", deallocWallpaperView,
                &previousWallpaperViewDealloc);
  platform::class_addMethod(objc_getClass("SpringBoard"), sel_registerName(deviceDidRotateSelector),
                            reinterpret_cast<IMP>(LumoraDeviceDidRotate), "v@:@");
  replaceMethod(objc_getClass("SpringBoard"),
                "applicationDidFinishLaunching:", applicationDidFinishLaunching,
                &previousApplicationDidFinishLaunching);
  replaceMethod(metaclassOf("SBDockView"), "defaultHeight", recordDefaultDockHeight,
                &previousDefaultDockHeight);
}

}  // namespace lumora
