// The status that the lines of a script check.
#pragma once

#include <nlohmann/json.hpp>

#include "tool/device/device_folder.h"

namespace tool {

// Returns the object that `lumora status --json` prints, and in it "views": an object with the view
// of each tag and each class, as `lumora views --json` prints them. If several have the same tag or
// class, it is the first one. Throws Failure if the home screen does not answer.
nlohmann::ordered_json scriptStatus(const DeviceFolder& device);

}  // namespace tool
