// What `lumora status --json` and `lumora settings --json` say, for people.
#pragma once

#include <string>
#include <vector>

#include <nlohmann/json.hpp>

namespace settings_window {

// A wallpaper that can be chosen and adjusted.
struct Place {
  // For people.
  std::string name;
  // "shared", "lockscreen" or "homescreen".
  std::string location = "shared";
  // The output of a desktop that has, or can have, this wallpaper for itself; "" is none.
  std::string output = "";
  // False for an output that shows the wallpaper of the desktop.
  bool isOwn = true;

  bool operator==(const Place&) const = default;
};

// The state as one status report describes it. Each of them may be an empty object.
class WallpaperState {
 public:
  WallpaperState() = default;
  // status: of the desktop or the simulated phone. ofPlace: of the place's output, otherwise the
  // same as status.
  WallpaperState(nlohmann::json status, nlohmann::json ofPlace);

  bool isRunning() const;
  bool isDesktop() const;
  bool isEnabled() const;
  // True if lock screen and home screen have one wallpaper each.
  bool isSeparate() const;
  // True if the wallpaper of the desktop has been paused by hand.
  bool isPausedByHand(const Place& place) const;
  // True if the place has a GIF.
  bool hasGIF(const Place& place) const;

  std::vector<Place> places() const;
  // What a desktop shows beside the GIF: "blur", a color such as "#203040", or a path.
  std::string backdrop() const;
  // The name of the GIF without its folder, or words that say that there is none.
  std::string title(const Place& place) const;
  // What the wallpaper does, and why: "Playing", "Paused: a window covers it".
  std::string description(const Place& place) const;

 private:
  nlohmann::json location(const Place& place) const;

  nlohmann::json status_ = nlohmann::json::object();
  nlohmann::json ofPlace_ = nlohmann::json::object();
};

}  // namespace settings_window
