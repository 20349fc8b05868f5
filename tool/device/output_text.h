// Describes a desktop's output in words.
#pragma once

#include <sstream>
#include <string>

#include <nlohmann/json.hpp>

#include "host/control/status_keys.h"

namespace tool {

// Returns a line such as "HDMI-1  1920x1080 at (0, 0), scale 1.5, covered". output: an element of
// host::status::outputs.
inline std::string textOfOutput(const nlohmann::ordered_json& output) {
  namespace key = host::status::output;
  const auto& area = output.at(key::area);
  std::ostringstream text;
  text << output.value(key::name, "") << "  " << area.at(2) << 'x' << area.at(3) << " at ("
       << area.at(0) << ", " << area.at(1) << "), scale " << output.value(key::scale, 1.0)
       << (output.value(key::isUnseen, false) ? ", covered" : "");
  return text.str();
}

}  // namespace tool
