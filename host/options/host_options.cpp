#include "host/options/host_options.h"

#include <algorithm>
#include <map>
#include <optional>
#include <sstream>
#include <utility>

#include <X11/Xlib.h>

namespace host {
namespace {

constexpr int minSide = 64;
constexpr int maxSide = 4096;
constexpr int maxScale = 4;
constexpr int maxRefreshRate = 240;

const std::map<std::string, DisplayKind> displays = {{"auto", DisplayKind::Auto},
                                                     {"window", DisplayKind::Window},
                                                     {"desktop", DisplayKind::Desktop},
                                                     {"headless", DisplayKind::Headless}};
const std::map<std::string, Idiom> idioms = {{"phone", Idiom::Phone}, {"pad", Idiom::Pad}};

template <typename Value>
std::vector<std::string> namesOf(const std::map<std::string, Value>& values) {
  std::vector<std::string> names(values.size());
  std::ranges::transform(values, names.begin(), [](const auto& entry) { return entry.first; });
  return names;
}

// Returns the size of the X11 screen in pixels, or nothing if there is none.
std::optional<std::pair<int, int>> x11Screen() {
  Display* display = XOpenDisplay(nullptr);
  if (display == nullptr) return std::nullopt;
  const int number = DefaultScreen(display);
  const std::pair size(DisplayWidth(display, number), DisplayHeight(display, number));
  XCloseDisplay(display);
  return size;
}

constexpr int phoneSize[] = {390, 844};
constexpr int padSize[] = {820, 1180};

// A desktop is as large as the X11 screen, rounded up to whole points.
void chooseSize(HostOptions& options, const std::optional<std::pair<int, int>>& screen) {
  const auto& usual = options.idiom == Idiom::Pad ? padSize : phoneSize;
  options.width = usual[0];
  options.height = usual[1];
  if (options.display != DisplayKind::Desktop || !screen) return;
  options.width = (screen->first + options.scale - 1) / options.scale;
  options.height = (screen->second + options.scale - 1) / options.scale;
}

bool parseSize(const std::string& text, HostOptions& options) {
  std::istringstream stream(text);
  char separator = 0;
  stream >> options.width >> separator >> options.height;
  auto fits = [](int side) { return side >= minSide && side <= maxSide; };
  return stream && stream.eof() && separator == 'x' && fits(options.width) && fits(options.height);
}

std::string sizeProblem() {
  return "must be WxH in points, from " + std::to_string(minSide) + " to " +
         std::to_string(maxSide) + " each";
}

}  // namespace

std::string nameOf(DisplayKind display) {
  for (const auto& [name, kind] : displays) {
    if (kind == display) return name;
  }
  return "";
}

void addHostOptions(CLI::App& command, HostOptions& options) {
  command
      .add_option_function<std::string>(
          "--display", [&options](const std::string& name) { options.display = displays.at(name); },
          "window, desktop (behind all windows), headless, or auto: a window if possible")
      ->check(CLI::IsMember(namesOf(displays)))
      ->type_name("auto|window|desktop|headless");
  command
      .add_option_function<std::string>(
          "--screen",
          [&options](const std::string& text) {
            if (!parseSize(text, options)) throw CLI::ValidationError("--screen", sizeProblem());
          },
          "size of the upright device in points")
      ->type_name("WxH");
  command.add_option("--scale", options.scale, "pixels per point")
      ->check(CLI::Range(1, maxScale))
      ->type_name("N");
  command.add_option("--refresh", options.refreshRate, "display refreshes per second")
      ->check(CLI::Range(1, maxRefreshRate))
      ->type_name("HZ");
  command
      .add_option_function<std::string>(
          "--idiom", [&options](const std::string& name) { options.idiom = idioms.at(name); },
          "kind of device")
      ->check(CLI::IsMember(namesOf(idioms)))
      ->type_name("phone|pad");
  command.add_flag("--locked", options.startsLocked, "start on the lock screen");
  command
      .add_option_function<std::string>(
          "--clock",
          [&options](const std::string& clock) { options.hasManualClock = clock == "manual"; },
          "real, or manual: moved only by `lumora advance` (headless only)")
      ->check(CLI::IsMember({"real", "manual"}))
      ->type_name("real|manual");
  command.parse_complete_callback([&options] {
    const auto screen = options.display == DisplayKind::Headless ? std::nullopt : x11Screen();
    if (options.display == DisplayKind::Auto) {
      options.display = screen ? DisplayKind::Window : DisplayKind::Headless;
    }
    if (options.width == 0) chooseSize(options, screen);
    if (options.hasManualClock && options.display != DisplayKind::Headless) {
      throw CLI::ValidationError("--clock", "manual needs --display headless");
    }
  });
}

std::vector<std::string> hostArguments(const HostOptions& options) {
  std::vector<std::string> arguments{
      "--display", nameOf(options.display),
      "--scale",   std::to_string(options.scale),
      "--refresh", std::to_string(options.refreshRate),
      "--idiom",   options.idiom == Idiom::Pad ? "pad" : "phone",
      "--clock",   options.hasManualClock ? "manual" : "real",
  };
  // The host measures a desktop itself; it may be larger than --screen accepts.
  if (options.display != DisplayKind::Desktop) {
    arguments.emplace_back("--screen");
    arguments.push_back(std::to_string(options.width) + "x" + std::to_string(options.height));
  }
  if (options.startsLocked) arguments.emplace_back("--locked");
  return arguments;
}

}  // namespace host
