// The user's settings: one property list that a settings program in another process changes at any
// time. Nothing is cached: every getter reads the whole file afresh, every write reads it, changes
// one key and replaces it whole. Any thread; nothing is locked, the last writer wins. A missing or
// damaged file, a missing key, an empty text or a value that is no text give the default.
#pragma once

#include <cstdint>
#include <string>

#include "platform/geometry.h"
#include "settings/screen_location.h"

namespace lumora {

// Whether the extension is to do anything at all.
bool getEnabled();
// Whether an animated wallpaper is installed somewhere, and at each location.
bool getWallpaperSet();
bool getSharedWallpaperSet();
bool getLockscreenWallpaperSet();
bool getHomescreenWallpaperSet();

// 1: one wallpaper for both screens; 0: separate ones.
std::int32_t getModeIndex();
// The screen that a new GIF is for in separate mode. 0: lock screen; 1: home screen.
std::int32_t getLocationIndex();

// Factor on the playback speed; 2 is twice as fast as the GIF says.
float getSharedGIFSpeed();
float getLockscreenGIFSpeed();
float getHomescreenGIFSpeed();
// Opacity, 0 to 1.
float getSharedGIFAlpha();
float getLockscreenGIFAlpha();
float getHomescreenGIFAlpha();
// Blur radius in pixels; 0 is sharp.
float getSharedGIFBlur();
float getLockscreenGIFBlur();
float getHomescreenGIFBlur();
// "FIT", "FILL" or "FULLSCREEN".
std::string getSharedScalingMode();
std::string getLockscreenScalingMode();
std::string getHomescreenScalingMode();

// Whether the views keep clear of the dock, and its last known height in points.
bool getDockEnabled();
platform::CGFloat getDockHeight();

// Full path of a newly chosen GIF, despite the key's name.
std::string getSafariSavePath();
// Kept for the settings program.
std::string getSafariObjectURL();
std::string getSharedTextFieldText();
std::string getLockscreenTextFieldText();
std::string getHomescreenTextFieldText();

// The getter of one location; for an unknown location the default, without a read.
float getGIFSpeed(ScreenLocation location);
float getGIFAlpha(ScreenLocation location);
float getGIFBlur(ScreenLocation location);

// The store's only write. A file that cannot be read is replaced by one with this key alone; a
// failed write leaves the file as it was.
void setPreferencesObjectKey(const std::string& object, const std::string& key);

}  // namespace lumora
