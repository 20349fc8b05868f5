#include "host/control/status_report.h"

#include <cmath>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <typeinfo>
#include <utility>

#include <cxxabi.h>
#include <nlohmann/json.hpp>

#include "host/control/status_keys.h"
#include "platform/linux/out_of_memory.h"
#include "platform/linux/views/main_thread_check.h"

namespace host {
namespace {

using nlohmann::json;
using platform::UIInterfaceOrientation;

class JsonDescription : public platform::ViewDescription {
 public:
  explicit JsonDescription(json& object) : object_(object) {}

  void addText(std::string_view name, std::string_view value) override { add(name, value); }
  void addNumber(std::string_view name, double value) override { add(name, value); }
  void addInteger(std::string_view name, long long value) override { add(name, value); }
  void addFlag(std::string_view name, bool value) override { add(name, value); }

 private:
  template <typename Value>
  void add(std::string_view name, const Value& value) {
    object_[std::string(name)] = value;
  }

  json& object_;
};

// Turning the device to the left moves its right side to the top.
constexpr std::pair<UIInterfaceOrientation, const char*> orientationNames[] = {
    {UIInterfaceOrientation::Portrait, "portrait"},
    {UIInterfaceOrientation::PortraitUpsideDown, "upside-down"},
    {UIInterfaceOrientation::LandscapeRight, "left"},
    {UIInterfaceOrientation::LandscapeLeft, "right"},
};

const char* stateName(ScreenState state) {
  switch (state) {
    case ScreenState::Locked:
      return "locked";
    case ScreenState::Home:
      return "home";
    case ScreenState::App:
      return status::screenApp;
    case ScreenState::Off:
      break;
  }
  return status::screenOff;
}

// Returns the name of the view's C++ class without the namespace of its file.
std::string typeOf(const platform::UIView& view) {
  const char* mangled = typeid(view).name();
  const std::unique_ptr<char, void (*)(void*)> name(
      abi::__cxa_demangle(mangled, nullptr, nullptr, nullptr), std::free);
  std::string type = name ? name.get() : mangled;
  constexpr std::string_view unnamed = "(anonymous namespace)::";
  if (const auto at = type.find(unnamed); at != type.npos) type.erase(at, unnamed.size());
  return type;
}

void describeTree(const platform::UIView& view, const json& parent, bool isVisible, json& views) {
  json description;
  JsonDescription sink(description);
  view.describe(sink);
  const platform::CGRect frame = view.frame();
  const bool isShown = isVisible && !view.hidden();
  description[status::parent] = parent;
  description[status::type] = typeOf(view);
  description[status::frame] = {frame.x, frame.y, frame.width, frame.height};
  description[status::visible] = isShown;
  const json place = views.size();
  views.push_back(std::move(description));
  for (const auto& subview : view.subviews()) describeTree(*subview, place, isShown, views);
}

json describe(const Output& output) {
  // Of fractional scales (the Wayland protocol fractional-scale-v1).
  constexpr double scaleSteps = 120;
  return {{status::output::name, output.name},
          {status::output::area, {output.x, output.y, output.width, output.height}},
          {status::output::scale, std::round(output.scale * scaleSteps) / scaleSteps},
          {status::output::isUnseen, output.isUnseen},
          {status::output::isWanted, output.isWanted},
          {status::output::isChosen, output.isChosen},
          {status::output::isPainted, output.isPainted}};
}

}  // namespace

const char* orientationName(UIInterfaceOrientation orientation) {
  for (const auto& [value, name] : orientationNames) {
    if (value == orientation) return name;
  }
  return "";
}

std::optional<UIInterfaceOrientation> orientationNamed(const std::string& name) {
  for (const auto& [value, known] : orientationNames) {
    if (name == known) return value;
  }
  return std::nullopt;
}

std::string statusReport(SpringBoard& springBoard) {
  const HostOptions& options = springBoard.options();
  json report = {
      {status::display, nameOf(options.display)},
      {status::screen, stateName(springBoard.state())},
      {status::covered, springBoard.isCovered()},
      {status::paused, springBoard.isPaused()},
      {status::savingPower, springBoard.isSavingPower()},
      {status::orientation, orientationName(springBoard.orientation())},
      {status::idiom, nameOf(options.idiom)},
      {status::size, {options.width, options.height}},
      {status::scale, options.scaleOfScreenshots()},
      {status::refreshRate, options.refreshRate},
      {status::isClockManual, options.hasManualClock},
      {status::outOfMemory, platform::backend::timesOutOfMemory()},
      {status::changesOffMainThread, platform::backend::timesOffMainThread()},
      {status::views, json::array()},
      {status::outputs, json::array()},
  };
  for (const Output& output : springBoard.outputs()) {
    report[status::outputs].push_back(describe(output));
  }
  describeTree(springBoard.screen().root(), nullptr, true, report[status::views]);
  return report.dump();
}

}  // namespace host
