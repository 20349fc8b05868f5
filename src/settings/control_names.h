// The Darwin notifications by which the settings program controls the host side of the extension.
// They carry no payload: what there is to know stands in the settings file.
#pragma once

namespace lumora::control {

// A newly chosen GIF is to be taken in.
constexpr auto wallpaperNeedsUpdating = "com.brightfen.lumora.wallpaperNeedsUpdating";
// The views are to be installed anew.
constexpr auto updateWallpaper = "com.brightfen.lumora.updateWallpaper";
// The same, and what is shown is to play.
constexpr auto updateAnimating = "com.brightfen.lumora.updateAnimating";
// Views are to be taken down.
constexpr auto removeGIFFromAllWallpapers = "com.brightfen.lumora.removeGIFFromAllWallpapers";
constexpr auto removeSharedGIFView = "com.brightfen.lumora.removeSharedGIFView";
constexpr auto removeLockscreenGIFView = "com.brightfen.lumora.removeLockscreenGIFView";
constexpr auto removeHomescreenGIFView = "com.brightfen.lumora.removeHomescreenGIFView";

}  // namespace lumora::control
