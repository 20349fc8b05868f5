// Runs the shipped Lumora8.dylib on this processor: its initializer, each function that it has
// installed in the host, and an installation during which the host raises an exception.
//
// usage: run_library LIBRARY

#include <cstdio>
#include <cstdlib>
#include <string>
#include <type_traits>
#include <vector>

#include "expectation.h"
#include "fake_host.h"
#include "unwinding.h"

namespace {

int failures = 0;

void expect(const char* what, const std::vector<std::string>& found,
            const std::vector<std::string>& expected) {
  if (!isAsExpected(what, found, expected)) ++failures;
}

template <typename Function>
Function* hook(std::size_t row) {
  return reinterpret_cast<Function*>(hooks().at(row).code);
}

// As large as an address, like all lengths on the device.
using CGFloat = std::conditional_t<sizeof(void*) == 8, double, float>;

}  // namespace

int main(int count, char** words) {
  if (count != 2) {
    std::fprintf(stderr, "usage: run_library LIBRARY\n");
    return 2;
  }
  const MachOImage library(words[1], resolve);
  adoptClasses(library);
  setUnwoundImage(library);
  expect("initializers", {std::to_string(library.initialize())}, {"1"});
  std::vector<std::string> rows;
  for (const Hook& each : hooks()) rows.push_back(each.place);
  expect("rows", rows,
         {"SBFWallpaperView dealloc", "SpringBoard +LumoraDeviceDidRotate: v@:@",
          "SpringBoard applicationDidFinishLaunching:", "meta SBDockView defaultHeight"});
  expect("nothing else at load", takeEvents(), {});
  if (failures > 0) return 1;

  void* const object = std::calloc(1, 64);
  hook<void(void*, const char*)>(0)(object, "dealloc");
  expect("dealloc", takeEvents(), {"own dealloc"});

  hook<void(void*, const char*, void*)>(1)(object, "LumoraDeviceDidRotate:", nullptr);
  expect("rotation without a wallpaper", takeEvents(), {});

  hook<void(void*, const char*, void*)>(2)(object, "applicationDidFinishLaunching:", nullptr);
  const std::string prefix = "hear com.brightfen.lumora.";
  expect("launch", takeEvents(),
         {"own launch", "create /var/mobile/Library/Lumora/", prefix + "wallpaperNeedsUpdating",
          prefix + "removeGIFFromAllWallpapers", prefix + "updateWallpaper",
          prefix + "removeSharedGIFView", prefix + "removeLockscreenGIFView",
          prefix + "removeHomescreenGIFView", prefix + "updateAnimating",
          "observe UIDeviceOrientationDidChangeNotification with LumoraDeviceDidRotate:"});

  const CGFloat height = hook<CGFloat(void*, const char*)>(3)(object, "defaultHeight");
  expect("height passed on", {std::to_string(height)}, {std::to_string(CGFloat{96})});
  expect("height recorded", takeEvents(), {"own defaultHeight", "store DOCK_HEIGHT "});

  raiseAtRedraw();
  post("com.brightfen.lumora.updateWallpaper");
  expect("installation with an exception", takeEvents(),
         {"redraw", "observe hidden", "add to the library's own view",
          "answer kLWGIFViewShouldResumeNotification", "answer kLWGIFViewShouldPauseNotification",
          "hear kLWGIFViewGIFSpeedNeedsUpdating", "hear kLWGIFViewGIFAlphaNeedsUpdating",
          "hear kLWGIFViewGIFBlurNeedsUpdating",
          "hear kLWGIFViewNeedsToRemoveUnneededViewNotification", "add to SBFWallpaperView",
          "store SHARED_WALLPAPER_SET TRUE", "say kLWGIFViewDidStartAnimatingNotification",
          "store WALLPAPER_SET TRUE"});
  return failures == 0 ? 0 : 1;
}
