// The library's files on the device.
#pragma once

namespace lumora {

constexpr auto settingsPath =
    "/var/mobile/Library/Preferences/com.brightfen.lumorapreferences.plist";

// Holds the wallpaper GIFs and their frame caches.
constexpr auto libraryDirectory = "/var/mobile/Library/Lumora/";

constexpr auto logPath = "/var/mobile/Library/Lumora/log.txt";

constexpr auto sharedGIFPath = "/var/mobile/Library/Lumora/Wallpaper_both.gif";
constexpr auto lockscreenGIFPath = "/var/mobile/Library/Lumora/Wallpaper_lockscreen.gif";
constexpr auto homescreenGIFPath = "/var/mobile/Library/Lumora/Wallpaper_homescreen.gif";

}  // namespace lumora
