#include "preferences/separation.h"

#include <cstddef>
#include <cstdio>

#include "settings/settings_store.h"

namespace preferences {
namespace {

using lumora::Location;
using lumora::ScreenLocation;

// Indexed by Location::id.
constexpr const char* placeNames[] = {"shared", "lock screen", "home screen"};

}  // namespace

const char* placeName(const Location& location) {
  return placeNames[static_cast<std::size_t>(location.id)];
}

const Location* otherLocationThatLoses(const Location& location) {
  const bool endsSharedMode = location.mode == lumora::WallpaperMode::Separate &&
                              lumora::wallpaperMode() == lumora::WallpaperMode::Shared &&
                              lumora::locationOf(ScreenLocation::Shared).getWallpaperSet();
  if (!endsSharedMode) return nullptr;
  const bool isLockScreen = location.id == ScreenLocation::LockScreen;
  return &lumora::locationOf(isLockScreen ? ScreenLocation::HomeScreen
                                          : ScreenLocation::LockScreen);
}

void printLossOf(const Location& other) {
  std::printf("the shared wallpaper is no longer shown on the %s; --keep-other keeps it there\n",
              placeName(other));
}

}  // namespace preferences
