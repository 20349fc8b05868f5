#include "host/displays/watched_bus.h"

#include <chrono>
#include <utility>

#include "platform/linux/main_loop/run_loop.h"

namespace host {
namespace {

using platform::backend::RunLoop;

// The main thread waits for answers, so this is short.
constexpr std::chrono::milliseconds maxAnswerTime{500};

}  // namespace

WatchedBus::WatchedBus(std::unique_ptr<sdbus::IConnection> bus)
    : bus_(std::move(bus)), descriptor_(bus_->getEventLoopPollData().fd) {
  bus_->setMethodCallTimeout(maxAnswerTime);
  RunLoop::main().addSource(descriptor_, [this] { return handleMessages(); });
}

WatchedBus::~WatchedBus() {
  if (descriptor_ >= 0) RunLoop::main().removeSource(descriptor_);
}

bool WatchedBus::handleMessages() {
  bool handled = false;
  try {
    while (bus_->processPendingRequest()) handled = true;
  } catch (const sdbus::Error&) {
    RunLoop::main().removeSource(descriptor_);
    descriptor_ = -1;
  }
  return handled;
}

sdbus::IProxy& WatchedBus::addProxy(const std::string& service, const std::string& path) {
  proxies_.push_back(sdbus::createProxy(*bus_, service, path));
  return *proxies_.back();
}

void WatchedBus::follow(const std::string& service, std::function<void(bool)> changed) {
  const std::string match =
      "type='signal',sender='org.freedesktop.DBus',interface='org.freedesktop.DBus',"
      "member='NameOwnerChanged',arg0='" +
      service + "'";
  matches_.push_back(bus_->addMatch(match, [changed = std::move(changed)](sdbus::Message& message) {
    std::string name;
    std::string oldOwner;
    std::string newOwner;
    message >> name >> oldOwner >> newOwner;
    changed(!newOwner.empty());
  }));
}

}  // namespace host
