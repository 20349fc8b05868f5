#include "host/displays/wayland/sway_windows.h"

#include <algorithm>
#include <utility>

#include <nlohmann/json.hpp>

namespace host::wayland {
namespace {

using namespace std::chrono_literals;
using platform::backend::RunLoop;

constexpr std::uint32_t subscribe = 2;
constexpr std::uint32_t getTree = 4;
constexpr std::uint32_t eventBit = 1U << 31;

// At most as often as this, however many events there are.
constexpr auto pace = 50ms;
// A key may start a program that moves windows, without an event for what it does.
constexpr auto settleTime = 500ms;

// Terminals change their titles all the time.
bool mayMoveWindows(std::string_view event) {
  const auto parsed = nlohmann::json::parse(event, nullptr, false);
  if (!parsed.is_object() || !parsed.contains("change")) return true;
  const auto& change = parsed["change"];
  return change != "title" && change != "urgent" && change != "mark";
}

}  // namespace

SwayWindows::SwayWindows(std::function<void()> changed)
    : changed_(std::move(changed)),
      socket_([this](std::uint32_t type, std::string_view text) { receive(type, text); },
              [this] { take({}); }) {
  // There are no events for layouts and gaps, but usually a key has changed them.
  socket_.send(subscribe, R"(["window", "workspace", "binding"])");
  // Older versions lack this event and reject a subscription that names it.
  socket_.send(subscribe, R"(["output"])");
  ask();
}

SwayWindows::~SwayWindows() {
  RunLoop::main().clearAlarm(this);
}

OutputUse SwayWindows::useOf(const std::string& output) const {
  const auto found = uses_.find(output);
  return found == uses_.end() ? OutputUse() : found->second;
}

void SwayWindows::receive(std::uint32_t type, std::string_view text) {
  if (type == getTree) take(readSwayTree(text));
  if ((type & eventBit) != 0 && mayMoveWindows(text)) refresh();
}

void SwayWindows::take(std::map<std::string, OutputUse> uses) {
  if (uses == uses_) return;
  uses_ = std::move(uses);
  changed_();
}

void SwayWindows::refresh() {
  if (!isConnected()) return;
  settledAt_ = Clock::now() + settleTime;
  askAt(std::max(Clock::now(), askedAt_ + pace));
}

void SwayWindows::askAt(Clock::time_point moment) {
  RunLoop::main().setAlarm(this, moment, [this] { ask(); });
}

void SwayWindows::ask() {
  askedAt_ = Clock::now();
  if (askedAt_ < settledAt_) askAt(settledAt_);
  socket_.send(getTree, "");
}

}  // namespace host::wayland
