// How a chosen GIF gets to the home screen: as a file in a folder that the home screen looks into,
// and as settings that name it.
#pragma once

#include <string>

#include "platform/data.h"
#include "settings/locations.h"

namespace preferences {

// Returns the device path at which a GIF for the location is handed over.
std::string incomingPath(const lumora::Location& location);

// Puts the GIF there. Throws Failure if it cannot.
void storeIncomingGIF(const lumora::Location& location, const platform::NSData& gif);
// Deletes it again, unless the home screen has taken it.
void removeIncomingGIF(const lumora::Location& location);

// Stores which GIF has been chosen. After that, the caller posts
// lumora::control::wallpaperNeedsUpdating, and the home screen takes the GIF. Throws Failure, and
// deletes the incoming GIF, if the settings cannot be stored.
void storeChoice(const lumora::Location& location);

// The settings that storeChoice changes, as they are stored now.
class KeptChoice {
 public:
  KeptChoice();
  // Stores them again. Throws Failure if they cannot be stored.
  void restore() const;

 private:
  std::string path_;
  std::string locationIndex_;
};

// Returns true if the location's wallpaper is made from exactly this GIF.
bool hasTaken(const lumora::Location& location, const platform::NSData& gif);

// Throws Failure if another program has changed the wallpaper or the mode since the home screen
// took the GIF.
void checkChoice(const lumora::Location& location, const platform::NSData& gif);

}  // namespace preferences
