#include "tool/commands/status_command.h"

#include <cstdio>
#include <memory>
#include <sstream>
#include <vector>

#include <nlohmann/json.hpp>
#include <unistd.h>

#include "command_line/json_text.h"
#include "command_line/size_text.h"
#include "command_line/terminal.h"
#include "gifview/description_keys.h"
#include "host/control/status_keys.h"
#include "settings/scaling.h"
#include "settings/settings_store.h"
#include "tool/device/host_connection.h"
#include "tool/device/last_desktop.h"
#include "tool/device/output_report.h"
#include "tool/device/wallpaper_names.h"
#include "tool/support/disk_use.h"

namespace tool {

using command_line::dumped;
using command_line::printable;
using command_line::textOfSize;

namespace {

using lumora::Location;
using nlohmann::ordered_json;
using platform::UIViewContentMode;
namespace description = lumora::description;
namespace reported = host::status;

// Returns the description of the view with this identifier, or null if it is on no wallpaper.
ordered_json viewOf(const ordered_json& report, const std::string& identifier) {
  for (const auto& view : report.value(reported::views, ordered_json::array())) {
    if (view.value(description::identifier, "") == identifier) return view;
  }
  return nullptr;
}

std::string whyNotPlaying(const ordered_json& view, const ordered_json& report) {
  const std::string screen = report.value(reported::screen, "");
  if (!lumora::getEnabled()) return "disabled";
  if (screen == reported::screenApp) return "app open";
  if (screen == reported::screenOff) return "display off";
  if (report.value(reported::paused, false)) return "by hand";
  if (report.value(reported::savingPower, false)) return "to save power";
  if (report.value(reported::covered, false)) return "covered";
  if (!view.value(reported::visible, false)) return "hidden";
  return "not started";
}

std::string whyNotAttached(const Location& location, bool isSet) {
  if (!isSet) return "nothing set";
  if (!lumora::getEnabled()) return "disabled";
  return lumora::isUsed(location, lumora::wallpaperMode()) ? "not attached"
                                                           : "not used in this mode";
}

std::string why(const ordered_json& view, const ordered_json& report, bool isSet) {
  if (!isSet) return "nothing set";
  if (view.value(description::framesInCache, 0) == 0) return "no frames";
  if (!view.value(description::playing, false)) return whyNotPlaying(view, report);
  return view.value(reported::visible, false) ? "shown" : "started";
}

// Returns null before the first frame. A view without frames reports one, too, because its clock
// runs all the same.
// Returns null also for a frame that the GIF before it had.
ordered_json shownFrame(const ordered_json& view) {
  const int frame = view.value(description::frameShown, -1);
  const bool isOfThisGIF = frame >= 0 && frame < view.value(description::framesInCache, 0);
  return isOfThisGIF ? ordered_json(frame) : ordered_json();
}

ordered_json scalingName(const ordered_json& view) {
  const char* name =
      lumora::nameOf(static_cast<UIViewContentMode>(view.value(description::contentMode, 0)));
  return name == nullptr ? ordered_json() : ordered_json(name);
}

ordered_json locationStatus(const ordered_json& report, const Location& location) {
  const ordered_json view = viewOf(report, location.identifier);
  ordered_json status = {{"set", location.getWallpaperSet()}, {"attached", !view.is_null()}};
  if (view.is_null()) {
    status[description::playing] = false;
    status["why"] = whyNotAttached(location, status.value("set", false));
    for (const char* key :
         {reported::frame, description::frameShown, description::framesInCache,
          description::framesShown, description::speed, description::alpha, "blur", "scaling"}) {
      status[key] = nullptr;
    }
    return status;
  }
  status[reported::frame] = view.value(reported::frame, ordered_json());
  status[description::playing] = view.value(description::playing, false);
  status["why"] = why(view, report, status.value("set", false));
  status[description::frameShown] = shownFrame(view);
  for (const char* key : {description::framesInCache, description::framesShown, description::speed,
                          description::alpha}) {
    status[key] = view.value(key, ordered_json());
  }
  status["blur"] = location.getGIFBlur();
  status["scaling"] = scalingName(view);
  return status;
}

std::string playback(const ordered_json& location) {
  const std::string all = location[description::framesInCache].dump();
  const std::string frame =
      location[description::frameShown].is_null()
          ? "none of " + all + " frames shown yet"
          : "frame " + location[description::frameShown].dump() + " of " + all;
  return location.value(description::playing, false)
             ? "playing, " + frame
             : "paused (" + location.value("why", "") + "), " + frame;
}

std::string viewSettings(const ordered_json& location) {
  const auto frame = location.value(reported::frame, std::vector<double>(4));
  std::ostringstream text;
  text << frame[2] << "x" << frame[3] << " at (" << frame[0] << ", " << frame[1] << "), "
       << location.value("scaling", "") << ", speed " << location.value(description::speed, 1.0)
       << ", opacity " << location.value(description::alpha, 1.0) << ", blur "
       << location.value("blur", 0.0);
  return text.str();
}

std::string gifOf(const ordered_json& location) {
  const std::string name =
      location["gif"].is_null() ? "a GIF" : location.value("gif", std::string());
  return name + " (" + textOfSize(location.value("gif_bytes", std::uint64_t{0})) + "): ";
}

void printLocation(const std::string& name, const ordered_json& location) {
  const bool isSet = location.value("set", false);
  std::string what = "not set";
  if (isSet && location.value("attached", false)) {
    what = gifOf(location) + playback(location) + ", " + viewSettings(location);
  } else if (isSet) {
    what = gifOf(location) + location.value("why", "");
  }
  std::printf("%-11s %s\n", name.c_str(), printable(what, STDOUT_FILENO).c_str());
}

// A desktop has outputs instead of a screen that is locked or turned.
void printScreen(const ordered_json& status) {
  for (const auto& output : status[reported::outputs]) {
    std::printf("output      %s\n", textOfOutput(output).c_str());
  }
  if (status.value(reported::display, "") == reported::displayDesktop) return;
  std::printf("screen      %s, %s, %s\n", status.value(reported::screen, "").c_str(),
              status.value(reported::orientation, "").c_str(),
              status.value(reported::idiom, "").c_str());
}

void printStatus(const ordered_json& status) {
  if (status.value("running", false)) {
    printScreen(status);
  }
  std::printf("mode        %s%s\n", lumora::nameOf(lumora::modeWithIndex(status.value("mode", 1))),
              status.value("enabled", true) ? "" : ", disabled");
  for (const auto& [name, location] : status["locations"].items()) printLocation(name, location);
  std::printf("files       %s in %s\n",
              textOfSize(status.value("disk_bytes", std::uint64_t{0})).c_str(),
              status.value("folder", "").c_str());
}

}  // namespace

ordered_json currentStatus(const DeviceFolder& device, HostConnection* host) {
  const auto report = host ? ordered_json::parse(host->status()) : ordered_json::object();
  ordered_json status = {{"running", !report.empty()}};
  for (const char* key : {reported::display, reported::screen, reported::orientation,
                          reported::idiom, reported::size, reported::scale}) {
    status[key] = report.value(key, ordered_json());
  }
  status[reported::outputs] = outputsOf(report, device);
  const bool isDesktop = report.value(reported::display, "") == reported::displayDesktop;
  status["backdrop"] =
      isDesktop ? ordered_json(textOf(lastDesktop(device).desktop.backdrop)) : ordered_json();
  status["mode"] = lumora::getModeIndex();
  status["enabled"] = lumora::getEnabled();
  for (const std::string& name : locationNames) {
    const Location& location = locationNamed(name);
    auto& described = status["locations"][name] = locationStatus(report, location);
    const auto gif = nameOfWallpaper(device, location);
    described["gif"] = gif ? ordered_json(*gif) : ordered_json();
    described["gif_bytes"] = sizeOfWallpaper(location);
  }
  return status;
}

namespace {

void reportStatus(const DeviceFolder& device, bool asJson) {
  auto host = HostConnection::find(device);
  ordered_json status = currentStatus(device, host.get());
  status["folder"] = device.path();
  status["disk_bytes"] = diskUse(device.path());
  if (asJson) {
    std::printf("%s\n", dumped(status, 2).c_str());
  } else if (host) {
    printStatus(status);
  }
  std::fflush(stdout);
  if (!host) HostConnection::require(device);
}

}  // namespace

void addStatusCommand(CLI::App& lumora, Context& context) {
  auto asJson = std::make_shared<bool>(false);
  auto* command =
      addCommand(lumora, context, "status", "print what plays, and why the others do not",
                 [&context, asJson] { reportStatus(context.device(), *asJson); });
  command->add_flag("--json", *asJson, "print one JSON object");
  addOutput(command, context.output);
}

}  // namespace tool
