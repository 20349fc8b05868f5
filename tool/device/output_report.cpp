#include "tool/device/output_report.h"

#include <algorithm>
#include <sstream>

#include "host/control/status_keys.h"
#include "tool/device/output_devices.h"

namespace tool {
namespace {

namespace key = host::status::output;
using nlohmann::ordered_json;

constexpr auto ownWallpaper = "own_wallpaper";

}  // namespace

ordered_json outputsOf(const ordered_json& report, const DeviceFolder& device) {
  auto outputs = report.value(host::status::outputs, ordered_json::array());
  const auto own = outputsWithOwnWallpaper(device);
  for (auto& output : outputs) {
    output[ownWallpaper] = std::ranges::binary_search(own, output.value(key::name, ""));
  }
  return outputs;
}

std::string problemWithOutput(const ordered_json& outputs, const std::string& name) {
  std::string names;
  for (const auto& output : outputs) {
    const std::string other = output.value(key::name, "");
    if (other == name) return "";
    names += (names.empty() ? "" : ", ") + other;
  }
  return "there is no output " + name +
         (names.empty() ? " at the moment" : "; the outputs are " + names);
}

std::string textOfOutput(const ordered_json& output) {
  const auto& area = output.at(key::area);
  std::ostringstream text;
  text << output.value(key::name, "") << "  " << area.at(2) << 'x' << area.at(3) << " at ("
       << area.at(0) << ", " << area.at(1) << "), scale " << output.value(key::scale, 1.0);
  if (output.value(ownWallpaper, false)) {
    text << ", a wallpaper of its own";
  } else if (!output.value(key::isChosen, true)) {
    text << ", not used";
  } else if (output.value(key::isUnseen, false)) {
    text << ", covered";
  }
  return text.str();
}

}  // namespace tool
