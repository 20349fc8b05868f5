#include "host/options/host_options.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <sstream>
#include <utility>

#include <X11/Xlib.h>

#include "command_line/one_of.h"

namespace host {
namespace {

constexpr int minSide = 64;
constexpr int maxSide = 4096;
constexpr int maxScale = 4;
constexpr int maxRefreshRate = 240;
constexpr std::size_t mebibyte = std::size_t{1} << 20;
constexpr int maxFrameMemory = 1024;

const std::map<std::string, DisplayKind> displays = {{"auto", DisplayKind::Auto},
                                                     {"window", DisplayKind::Window},
                                                     {"desktop", DisplayKind::Desktop},
                                                     {"headless", DisplayKind::Headless}};
const std::map<std::string, Idiom> idioms = {{"phone", Idiom::Phone}, {"pad", Idiom::Pad}};
const std::map<std::string, Filter> filters = {
    {"auto", Filter::Auto}, {"nearest", Filter::Nearest}, {"smooth", Filter::Smooth}};

template <typename Value>
std::vector<std::string> namesOf(const std::map<std::string, Value>& values) {
  std::vector<std::string> names(values.size());
  std::ranges::transform(values, names.begin(), [](const auto& entry) { return entry.first; });
  return names;
}

bool hasX11Server() {
  Display* display = XOpenDisplay(nullptr);
  if (display != nullptr) XCloseDisplay(display);
  return display != nullptr;
}

constexpr int phoneSize[] = {390, 844};
constexpr int padSize[] = {820, 1180};

template <typename Value>
std::string nameIn(const std::map<std::string, Value>& values, Value value) {
  for (const auto& [name, each] : values) {
    if (each == value) return name;
  }
  return "";
}

constexpr double maxChannel = 255;
constexpr auto blurWord = "blur";
constexpr auto stillWord = "still";

// Returns false if the text is not "#" with six hexadecimal digits.
bool parseColor(const std::string& text, BackdropOptions& backdrop) {
  unsigned channels[3];
  int end = 0;
  constexpr int lengthOfColor = 7;
  const int count =
      std::sscanf(text.c_str(), "#%2x%2x%2x%n", &channels[0], &channels[1], &channels[2], &end);
  if (count != 3 || end != lengthOfColor || text.size() != lengthOfColor) return false;
  backdrop.red = channels[0] / maxChannel;
  backdrop.green = channels[1] / maxChannel;
  backdrop.blue = channels[2] / maxChannel;
  return true;
}

// Returns false if the text is neither "none" nor a number of seconds.
bool parseTransition(const std::string& text, DesktopOptions& desktop) {
  constexpr double maxSeconds = 60;
  double seconds = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), seconds);
  const bool isNumber = error == std::errc() && end == text.data() + text.size();
  desktop.transition = std::chrono::duration<double>(isNumber ? seconds : 0);
  return text == "none" || (isNumber && seconds >= 0 && seconds <= maxSeconds);
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

std::optional<BackdropOptions> parsedBackdrop(const std::string& text) {
  BackdropOptions backdrop;
  const bool isColor = text.starts_with('#');
  backdrop.kind = text == blurWord    ? BackdropKind::Blur
                  : text == stillWord ? BackdropKind::Still
                  : isColor           ? BackdropKind::Color
                                      : BackdropKind::File;
  if (isColor && !parseColor(text, backdrop)) return std::nullopt;
  if (backdrop.kind != BackdropKind::File) return backdrop;
  std::error_code error;
  backdrop.file = std::filesystem::weakly_canonical(text, error);
  return error || text.empty() ? std::nullopt : std::optional(backdrop);
}

std::string textOf(const BackdropOptions& backdrop) {
  if (backdrop.kind == BackdropKind::Blur) return blurWord;
  if (backdrop.kind == BackdropKind::Still) return stillWord;
  if (backdrop.kind == BackdropKind::File) return backdrop.file;
  const auto channel = [](double value) {
    return static_cast<unsigned>(std::lround(value * maxChannel));
  };
  char text[16];
  std::snprintf(text, sizeof text, "#%02x%02x%02x", channel(backdrop.red), channel(backdrop.green),
                channel(backdrop.blue));
  return text;
}

std::string nameOf(DisplayKind display) {
  return nameIn(displays, display);
}

std::string nameOf(Idiom idiom) {
  return nameIn(idioms, idiom);
}

namespace {

std::string environment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? "" : value;
}

void chooseDisplay(HostOptions& options) {
  options.display = hasX11Server() ? DisplayKind::Window : DisplayKind::Headless;
  if (options.display == DisplayKind::Window) return;
  if (const std::string name = environment("DISPLAY"); !name.empty()) {
    options.missingDisplay = "cannot connect to the X server " + name;
  } else if (!environment("WAYLAND_DISPLAY").empty()) {
    options.missingDisplay = "it needs an X server, such as Xwayland (--display desktop does not)";
  }
}

void addDisplayOptions(CLI::App& command, HostOptions& options) {
  command_line::acceptOneOf(
      command.add_option_function<std::string>(
          "--display", [&options](const std::string& name) { options.display = displays.at(name); },
          "where to show it; desktop: behind all windows; auto: in a window, or headless where "
          "there is no display"),
      namesOf(displays));
  command
      .add_option_function<std::string>(
          "--backdrop",
          [&options](const std::string& text) {
            const auto backdrop = parsedBackdrop(text);
            if (!backdrop) throw CLI::ValidationError("--backdrop", backdropProblem);
            options.desktop.backdrop = *backdrop;
          },
          backdropHelp)
      ->type_name(backdropValues);
  command
      .add_option_function<int>(
          "--frame-memory",
          [&options](int mebibytes) {
            options.desktop.maxKeptBytes = static_cast<std::size_t>(mebibytes) * mebibyte;
          },
          "memory for the window or each output in which drawn frames are kept, to save CPU time; "
          "0 keeps none (default: 16)")
      ->check(CLI::Range(0, maxFrameMemory))
      ->type_name("MIB");
}

void addDeviceOptions(CLI::App& command, HostOptions& options) {
  constexpr auto group = "Simulated phone";
  command
      .add_option_function<std::string>(
          "--screen",
          [&options](const std::string& text) {
            if (!parseSize(text, options)) throw CLI::ValidationError("--screen", sizeProblem());
          },
          "size of the upright device in points")
      ->type_name("WxH")
      ->group(group);
  command_line::acceptOneOf(
      command.add_option_function<std::string>(
          "--idiom", [&options](const std::string& name) { options.idiom = idioms.at(name); },
          "kind of device; pad is a tablet"),
      namesOf(idioms))
      ->group(group);
  command.add_flag("--locked", options.startsLocked, "start on the lock screen")->group(group);
  command_line::acceptOneOf(
      command.add_option_function<std::string>(
          "--keys", [&options](const std::string& choice) { options.showsKeys = choice == "on"; },
          "whether a window explains its keys at the start (default: only the first one)"),
      {"off", "on"})
      ->group(group);
  command_line::acceptOneOf(
      command.add_option_function<std::string>(
          "--motion",
          [&options](const std::string& choice) { options.hasMotion = choice == "full"; },
          "whether a window shows transitions from screen to screen (default: full)"),
      {"full", "none"})
      ->group(group);
  command
      .add_option(
          "--scale", options.scale,
          "pixels per point, from 1 to 4 (default: 1; in a window, what the monitor suggests)")
      ->check(CLI::Range(1, maxScale))
      ->type_name("N")
      ->group(group);
  command.add_option("--refresh", options.refreshRate, "display refreshes per second, up to 240")
      ->check(CLI::Range(1, maxRefreshRate))
      ->type_name("HZ")
      ->group(group);
  command_line::acceptOneOf(
      command.add_option_function<std::string>(
          "--clock",
          [&options](const std::string& clock) { options.hasManualClock = clock == "manual"; },
          "manual: moved only by `lumora advance`; needs --display headless"),
      {"real", "manual"})
      ->group(group);
}

void addDesktopOptions(CLI::App& command, DesktopOptions& desktop) {
  constexpr auto group = "Desktop";
  command_line::acceptOneOf(
      command.add_option_function<std::string>(
          "--filter", [&desktop](const std::string& name) { desktop.filter = filters.at(name); },
          "how to draw enlarged pixels; auto: nearest for pixel art, otherwise smooth"),
      namesOf(filters))
      ->group(group);
  command
      .add_option("--output", desktop.outputs,
                  "show the wallpaper only on this output of `lumora outputs`; may be given again")
      ->allow_extra_args(false)
      ->type_name("OUTPUT")
      ->group(group);
  command
      .add_option("--except", desktop.exceptedOutputs,
                  "show it on all outputs but this one; may be given again")
      ->allow_extra_args(false)
      ->type_name("OUTPUT")
      ->group(group);
  command
      .add_option_function<std::string>(
          "--transition",
          [&desktop](const std::string& text) {
            if (!parseTransition(text, desktop)) {
              throw CLI::ValidationError("--transition",
                                         "must be none or a number of seconds up to 60");
            }
          },
          "how long to fade to a new GIF (default: 0.5)")
      ->type_name("SECONDS|none")
      ->group(group);
  command_line::acceptOneOf(
      command.add_option_function<std::string>(
          "--on-battery",
          [&desktop](const std::string& choice) { desktop.pausesOnBattery = choice == "pause"; },
          "what to do on battery and in power-saver mode (default: play)"),
      {"pause", "play"})
      ->group(group);
  command.add_flag("--span", desktop.isSpanning, "let one picture span all outputs")->group(group);
}

}  // namespace

void addHostOptions(CLI::App& command, HostOptions& options) {
  addDisplayOptions(command, options);
  addDesktopOptions(command, options.desktop);
  addDeviceOptions(command, options);
  command.parse_complete_callback([&options] {
    if (options.display == DisplayKind::Auto) chooseDisplay(options);
    if (options.width == 0) {
      const auto& usual = options.idiom == Idiom::Pad ? padSize : phoneSize;
      options.width = usual[0];
      options.height = usual[1];
    }
    const DesktopOptions& desktop = options.desktop;
    const bool namesOutputs = !desktop.outputs.empty() || !desktop.exceptedOutputs.empty();
    if ((namesOutputs || desktop.isSpanning) && options.display != DisplayKind::Desktop) {
      throw CLI::ValidationError("--output, --except and --span", "need --display desktop");
    }
    if (options.hasManualClock && options.display != DisplayKind::Headless) {
      throw CLI::ValidationError("--clock", "manual needs --display headless");
    }
  });
}

std::vector<std::string> hostArguments(const HostOptions& options) {
  std::vector<std::string> arguments{
      "--display",      nameOf(options.display),
      "--refresh",      std::to_string(options.refreshRate),
      "--idiom",        nameOf(options.idiom),
      "--clock",        options.hasManualClock ? "manual" : "real",
      "--filter",       nameIn(filters, options.desktop.filter),
      "--backdrop",     textOf(options.desktop.backdrop),
      "--frame-memory", std::to_string(options.desktop.maxKeptBytes / mebibyte),
  };
  if (options.display != DisplayKind::Desktop && options.width > 0) {
    arguments.emplace_back("--screen");
    arguments.push_back(std::to_string(options.width) + "x" + std::to_string(options.height));
  }
  if (options.startsLocked) arguments.emplace_back("--locked");
  const auto add = [&arguments](const char* option, const std::vector<std::string>& values) {
    for (const std::string& value : values) arguments.insert(arguments.end(), {option, value});
  };
  if (options.scale) add("--scale", {std::to_string(*options.scale)});
  if (options.showsKeys) add("--keys", {*options.showsKeys ? "on" : "off"});
  add("--motion", {options.hasMotion ? "full" : "none"});
  add("--output", options.desktop.outputs);
  add("--except", options.desktop.exceptedOutputs);
  arguments.emplace_back("--transition");
  arguments.push_back(std::to_string(options.desktop.transition.count()));
  arguments.emplace_back("--on-battery");
  arguments.emplace_back(options.desktop.pausesOnBattery ? "pause" : "play");
  if (options.desktop.isSpanning) arguments.emplace_back("--span");
  return arguments;
}

}  // namespace host
