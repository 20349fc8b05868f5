// Describes the outputs of a desktop.
#pragma once

#include <string>

#include <nlohmann/json.hpp>

#include "tool/device/device_folder.h"

namespace tool {

// Returns the outputs of a home screen's status report, with the key "own_wallpaper": true if the
// output has a wallpaper of its own.
nlohmann::ordered_json outputsOf(const nlohmann::ordered_json& report, const DeviceFolder& device);

// Returns "" if one of the outputs of a status report has this name, and otherwise says which there
// are.
std::string problemWithOutput(const nlohmann::ordered_json& outputs, const std::string& name);

// Returns a line such as "HDMI-1  1920x1080 at (0, 0), scale 1.5, covered". output: an element of
// the above.
std::string textOfOutput(const nlohmann::ordered_json& output);

}  // namespace tool
