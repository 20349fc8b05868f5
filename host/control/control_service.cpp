#include "host/control/control_service.h"

#include <algorithm>
#include <new>
#include <utility>

#include "host/control/control_names.h"
#include "host/control/settling.h"
#include "host/control/status_report.h"
#include "host/control/trace_report.h"
#include "host/home_screen/screen_drawing.h"
#include "platform/linux/bus/bus.h"
#include "platform/linux/main_loop/display_clock.h"
#include "platform/linux/main_loop/run_loop.h"

namespace host {
namespace {

using platform::backend::DisplayClock;
using platform::backend::RunLoop;

constexpr auto failure = "com.brightfen.lumora.Error.Failed";

sdbus::Error refusal(const std::string& reason) {
  return {failure, reason};
}

// The largest time span of a call in nanoseconds: longer than any use, and far from an overflow.
constexpr std::int64_t maxSpan = std::int64_t{1'000'000} * std::nano::den;

// Turns a lack of memory into an error of the bus library, because no other exception may pass
// through its C code.
template <typename Work>
auto reportingOutOfMemory(Work work) {
  try {
    return work();
  } catch (const std::bad_alloc&) {
    throw refusal("out of memory");
  }
}

// Takes the descriptor of a file, because a picture may be larger than the largest message.
sdbus::UnixFd answerOf(int picture) {
  if (picture < 0) throw refusal("there is no screen, or not enough memory for a picture of it");
  return {picture, sdbus::adopt_fd};
}

// A call that changes the state answers when its effects are there, or after this time.
constexpr std::chrono::seconds stateLimit{2};

}  // namespace

ControlService::ControlService(SpringBoard& springBoard, DisplayActions display)
    : springBoard_(springBoard),
      display_(std::move(display)),
      object_(sdbus::createObject(platform::backend::Bus::current()->listener(), service::path)) {
  if (platform::backend::Bus::current()->nameHasOwner(service::busName)) {
    throw refusal("a home screen is already running on this bus");
  }
  registerStates();
  registerOtherMethods();
  object_->finishRegistration();
  platform::backend::setTraceListener([](const platform::backend::TraceEvent& event) {
    platform::backend::Bus::current()->emitSignal(service::path, service::interface,
                                                  service::traced, traceReport(event));
  });
}

void ControlService::announce() {
  platform::backend::Bus::current()->listener().requestName(service::busName);
}

void ControlService::registerStates() {
  struct StateChange {
    const char* method;
    void (*change)(SpringBoard&);
  };
  constexpr StateChange changes[] = {
      {service::method::lock, [](SpringBoard& springBoard) { springBoard.lock(); }},
      {service::method::home, [](SpringBoard& springBoard) { springBoard.goHome(); }},
      {service::method::openApp, [](SpringBoard& springBoard) { springBoard.openApp(); }},
      {service::method::closeApp, [](SpringBoard& springBoard) { springBoard.closeApp(); }},
      {service::method::displayOn, [](SpringBoard& springBoard) { springBoard.turnDisplay(true); }},
      {service::method::displayOff,
       [](SpringBoard& springBoard) { springBoard.turnDisplay(false); }},
  };
  for (const auto& [method, change] : changes) {
    object_->registerMethod(method)
        .onInterface(service::interface)
        .implementedAs([this, change = change](sdbus::Result<>&& result) {
          if (refusesOnDesktop(result)) return;
          change(springBoard_);
          whenSettled(std::move(result));
        });
  }
}

void ControlService::registerOtherMethods() {
  auto add = [this](const char* name, auto handler) {
    object_->registerMethod(name).onInterface(service::interface).implementedAs(std::move(handler));
  };
  add(service::method::rotate, [this](sdbus::Result<>&& result, const std::string& orientation) {
    rotate(std::move(result), orientation);
  });
  add(service::method::noteNewWallpaper, [this] { springBoard_.noteNewWallpaper(); });
  add(service::method::setWallpaperName,
      [this](const std::string& name) { springBoard_.setWallpaperName(name); });
  add(service::method::setExceptedOutputs,
      [this](sdbus::Result<>&& result, std::vector<std::string> names) {
        setExceptedOutputs(std::move(result), std::move(names));
      });
  add(service::method::setBackdrop, [this](sdbus::Result<>&& result, const std::string& text) {
    setBackdrop(std::move(result), text);
  });
  add(service::method::pause,
      [this](sdbus::Result<>&& result) { setPaused(std::move(result), true); });
  add(service::method::resume,
      [this](sdbus::Result<>&& result) { setPaused(std::move(result), false); });
  add(service::method::advance,
      [this](sdbus::Result<>&& result, std::int64_t nanoseconds, std::int64_t timeout) {
        advance(std::move(result), nanoseconds, timeout);
      });
  add(service::method::settle, [this](sdbus::Result<bool>&& result) {
    auto done = std::make_shared<sdbus::Result<bool>>(std::move(result));
    addJob([done] { done->returnResults(settle(RunLoop::Clock::now() + stateLimit)); });
  });
  add(service::method::status,
      [this] { return reportingOutOfMemory([this] { return statusReport(springBoard_); }); });
  add(service::method::trace, [] {
    return reportingOutOfMemory([] { return traceReport(platform::backend::tracedHooks()); });
  });
  add(service::method::screenshot,
      [this] { return reportingOutOfMemory([this] { return screenshot(); }); });
  add(service::method::pixels,
      [this] { return reportingOutOfMemory([this] { return pixels(); }); });
  add(service::method::stop, [] { RunLoop::main().perform([] { RunLoop::main().stop(); }); });
}

sdbus::UnixFd ControlService::screenshot() {
  const DrawnSurface picture = display_.draw();
  return answerOf(picture ? pngOf(picture.get()) : -1);
}

std::tuple<sdbus::UnixFd, std::int32_t, std::int32_t> ControlService::pixels() {
  const DrawnSurface picture = display_.draw();
  return {answerOf(picture ? pixelFileOf(picture.get()) : -1),
          cairo_image_surface_get_width(picture.get()),
          cairo_image_surface_get_height(picture.get())};
}

void ControlService::addJob(std::function<void()> job) {
  jobs_.push_back(std::move(job));
  RunLoop::main().wake();
}

void ControlService::runJobs() {
  while (!jobs_.empty() && !RunLoop::main().isStopped()) {
    auto job = std::move(jobs_.front());
    jobs_.pop_front();
    job();
  }
}

void ControlService::whenSettled(sdbus::Result<>&& result) {
  auto done = std::make_shared<sdbus::Result<>>(std::move(result));
  addJob([done] {
    settle(RunLoop::Clock::now() + stateLimit);
    done->returnResults();
  });
}

// Returns true if it has answered that a desktop has no such state.
bool ControlService::refusesOnDesktop(const sdbus::Result<>& result) const {
  const bool isDesktop = springBoard_.options().display == DisplayKind::Desktop;
  if (isDesktop) {
    result.returnError(refusal(
        "a desktop has no lock screen, apps or rotation; start `lumora run` without --display "
        "desktop for a simulated phone"));
  }
  return isDesktop;
}

void ControlService::setExceptedOutputs(sdbus::Result<>&& result, std::vector<std::string> names) {
  if (!display_.setExceptedOutputs) {
    result.returnError(refusal("it is not on a desktop"));
    return;
  }
  display_.setExceptedOutputs(std::move(names));
  result.returnResults();
}

void ControlService::setBackdrop(sdbus::Result<>&& result, const std::string& text) {
  const auto backdrop = parsedBackdrop(text);
  if (!backdrop) {
    result.returnError(refusal("no such backdrop"));
    return;
  }
  display_.setBackdrop(*backdrop);
  whenSettled(std::move(result));
}

void ControlService::setPaused(sdbus::Result<>&& result, bool isPaused) {
  if (springBoard_.options().display != DisplayKind::Desktop) {
    result.returnError(refusal(
        "only the wallpaper of a desktop can be paused; on a phone, `lumora app open` hides it"));
    return;
  }
  springBoard_.setPaused(isPaused);
  whenSettled(std::move(result));
}

void ControlService::rotate(sdbus::Result<>&& result, const std::string& name) {
  const auto orientation = orientationNamed(name);
  if (!orientation) {
    result.returnError(refusal("no such orientation"));
    return;
  }
  if (refusesOnDesktop(result)) return;
  springBoard_.rotate(*orientation);
  whenSettled(std::move(result));
}

void ControlService::advance(sdbus::Result<>&& result, std::int64_t nanoseconds,
                             std::int64_t timeout) {
  if (!DisplayClock::main().isManual()) {
    result.returnError(refusal("the clock follows real time; start with --clock manual"));
    return;
  }
  if (std::min(nanoseconds, timeout) < 0 || std::max(nanoseconds, timeout) > maxSpan) {
    result.returnError(refusal("no such span of time"));
    return;
  }
  const auto limit = RunLoop::Clock::now() + std::chrono::nanoseconds(timeout);
  auto done = std::make_shared<sdbus::Result<>>(std::move(result));
  addJob([done, nanoseconds, limit] {
    auto handleDue = [limit] {
      RunLoop::main().handleDue();
      RunLoop::main().runMainQueue();
      return !RunLoop::main().isStopped() && RunLoop::Clock::now() < limit;
    };
    const bool arrived =
        settle(limit) &&
        DisplayClock::main().advance(std::chrono::nanoseconds(nanoseconds), handleDue) &&
        settle(limit);
    if (arrived) {
      done->returnResults();
    } else {
      done->returnError(refusal("the clock did not reach the requested time before the timeout"));
    }
  });
}

}  // namespace host
