#include "settings_window/wallpaper_state.h"

#include <filesystem>
#include <map>
#include <utility>

namespace settings_window {
namespace {

using nlohmann::json;

// By the key "why" of a location.
const std::map<std::string, std::string> descriptions = {
    {"shown", "Playing"},
    {"started", "Playing"},
    {"covered", "Paused: it cannot be seen"},
    {"by hand", "Paused by you"},
    {"to save power", "Paused to save power"},
    {"hidden", "Paused: another screen is shown"},
    {"app open", "Paused: an app is open"},
    {"display off", "Paused: the display is off"},
    {"disabled", "Animated wallpapers are switched off"},
    {"no frames", "Getting the frames ready"},
    {"nothing set", "Choose a GIF to begin"},
    {"not used in this mode", "Not used at present"},
};

}  // namespace

WallpaperState::WallpaperState(json status, json ofPlace)
    : status_(std::move(status)), ofPlace_(std::move(ofPlace)) {
  if (!status_.is_object()) status_ = json::object();
  if (!ofPlace_.is_object()) ofPlace_ = json::object();
}

bool WallpaperState::isRunning() const {
  return status_.value("running", false);
}

bool WallpaperState::isDesktop() const {
  return isRunning() && status_.at("display") == "desktop";
}

bool WallpaperState::isEnabled() const {
  return status_.value("enabled", true);
}

bool WallpaperState::isSeparate() const {
  constexpr int shared = 1;
  return status_.value("mode", shared) != shared;
}

bool WallpaperState::isPausedByHand(const Place& place) const {
  return location(place).value("why", "") == "by hand";
}

bool WallpaperState::hasGIF(const Place& place) const {
  return location(place).value("set", false);
}

std::vector<Place> WallpaperState::places() const {
  if (isDesktop()) {
    std::vector<Place> places{{.name = "All outputs"}};
    const json outputs = status_.value("outputs", json::array());
    for (const json& output : outputs) {
      const std::string name = output.value("name", "");
      const bool isOwn = output.value("own_wallpaper", false);
      if (outputs.size() == 1 && !isOwn) continue;
      places.push_back({.name = name, .output = name, .isOwn = isOwn});
    }
    return places;
  }
  if (isRunning() && isSeparate()) {
    return {{.name = "Lock screen", .location = "lockscreen"},
            {.name = "Home screen", .location = "homescreen"}};
  }
  return {{.name = isRunning() ? "Both screens" : "All outputs"}};
}

std::string WallpaperState::backdrop() const {
  return isDesktop() ? status_.value("backdrop", "blur") : "blur";
}

json WallpaperState::location(const Place& place) const {
  const json& status = place.output.empty() || !place.isOwn ? status_ : ofPlace_;
  return status.value("locations", json::object()).value(place.location, json::object());
}

std::string WallpaperState::title(const Place& place) const {
  const json found = location(place);
  if (!found.value("set", false)) return "No GIF chosen";
  const json name = found.value("gif", json());
  return name.is_string() ? std::filesystem::path(name.get<std::string>()).filename().string()
                          : "A GIF";
}

std::string WallpaperState::description(const Place& place) const {
  if (!isRunning()) return hasGIF(place) ? "Not started" : "Choose a GIF to begin";
  if (!place.isOwn) return "Shows the wallpaper of all outputs";
  const auto words = descriptions.find(location(place).value("why", ""));
  return words == descriptions.end() ? "Not shown" : words->second;
}

}  // namespace settings_window
