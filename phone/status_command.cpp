#include "phone/status_command.h"

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

#include <nlohmann/json.hpp>

#include "command_line/count.h"
#include "command_line/json_text.h"
#include "command_line/size_text.h"
#include "gifview/frame_cache.h"
#include "phone/file_owner.h"
#include "platform/data.h"
#include "platform/file_manager.h"
#include "preferences/location_names.h"
#include "settings/settings_store.h"

namespace phone {
namespace {

using lumora::Location;
using nlohmann::ordered_json;

// What is known from the files. The home screen does not tell other programs if it plays.
struct WallpaperFiles {
  std::uint64_t gifBytes = 0;
  // 0 if they are not all made.
  int frames = 0;
};

WallpaperFiles filesOf(const Location& location) {
  WallpaperFiles files;
  if (!platform::fileExistsAtPath(location.gifPath)) return files;
  const auto gif = platform::NSData::dataWithContentsOfFile(location.gifPath);
  if (!gif) return files;
  files.gifBytes = gif->length();
  const lumora::FrameCacheLayout cache(location.gifPath);
  const auto durations = lumora::loadFrameDurations(cache);
  if (durations && lumora::isFrameCacheValid(cache, *gif)) {
    files.frames = static_cast<int>(durations->size());
  }
  return files;
}

std::string lookOf(const Location& location) {
  char text[120];
  std::snprintf(text, sizeof text, "%s, speed %g, opacity %g, blur %g",
                location.getScalingMode().c_str(), static_cast<double>(location.getGIFSpeed()),
                static_cast<double>(location.getGIFAlpha()),
                static_cast<double>(location.getGIFBlur()));
  return text;
}

std::string stateOf(const Location& location, const WallpaperFiles& files) {
  if (files.gifBytes == 0) return "not set";
  const std::string gif = "a GIF (" + command_line::textOfSize(files.gifBytes) + "): ";
  if (!lumora::isUsed(location, lumora::wallpaperMode())) return gif + "not used in this mode";
  if (files.frames == 0) return gif + "its frames are not made yet";
  const std::string frames = command_line::countOfFrames(files.frames) + ", ";
  return gif + frames + (location.getWallpaperSet() ? lookOf(location) : "hidden");
}

ordered_json asJson(const Location& location, const WallpaperFiles& files) {
  return {{"set", location.getWallpaperSet()},
          {"gif_bytes", files.gifBytes},
          {"frames", files.frames},
          {"scaling", location.getScalingMode()},
          {"speed", location.getGIFSpeed()},
          {"alpha", location.getGIFAlpha()},
          {"blur", location.getGIFBlur()}};
}

void printJson() {
  ordered_json status = {{"mode", lumora::getModeIndex()},
                         {"enabled", lumora::getEnabled()},
                         {"dock", lumora::getDockEnabled()}};
  for (const std::string& name : preferences::locationNames) {
    const Location& location = preferences::locationNamed(name);
    status["locations"][name] = asJson(location, filesOf(location));
  }
  std::printf("%s\n", command_line::dumped(status, 2).c_str());
}

void printText() {
  std::printf("mode        %s%s\n", lumora::nameOf(lumora::wallpaperMode()),
              lumora::getEnabled() ? "" : ", disabled");
  for (const std::string& name : preferences::locationNames) {
    const Location& location = preferences::locationNamed(name);
    std::printf("%-11s %s\n", name.c_str(), stateOf(location, filesOf(location)).c_str());
  }
}

}  // namespace

void addStatusCommand(CLI::App& lumora, command_line::Context& context) {
  auto wantsJson = std::make_shared<bool>(false);
  auto* command = addCommand(lumora, context, "status",
                             "print which wallpapers are set, as their files tell", [wantsJson] {
                               workAsOwner();
                               *wantsJson ? printJson() : printText();
                             });
  command->add_flag("--json", *wantsJson, "print one JSON object");
}

}  // namespace phone
