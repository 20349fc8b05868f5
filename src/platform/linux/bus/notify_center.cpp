#include "platform/notify_center.h"

#include <algorithm>
#include <map>
#include <mutex>
#include <utility>
#include <vector>

#include "platform/linux/bus/bus.h"
#include "platform/linux/bus/darwin_bus_names.h"
#include "platform/linux/main_loop/run_loop.h"

namespace platform {
using namespace backend;

namespace {

struct Registration {
  const DarwinNotifyCenter* center;
  const void* observer;
  std::string name;
  DarwinNotifyCenter::Callback callback;
};

// All registrations of the process, and a match on the bus for each of their names.
class Registry {
 public:
  static Registry& instance() {
    static auto* registry = new Registry;
    return *registry;
  }

  void add(Registration registration) {
    {
      std::lock_guard lock(mutex_);
      registrations_.push_back(std::move(registration));
    }
    // On the main thread the match can be added at once, so that nothing posted later is missed.
    if (Bus* bus = Bus::current(); bus != nullptr && bus->isListeningThread()) addMatches(*bus);
    updateMatchesLater();
  }

  template <typename Condition>
  void removeIf(Condition condition) {
    {
      std::lock_guard lock(mutex_);
      std::erase_if(registrations_, condition);
    }
    updateMatchesLater();
  }

 private:
  // Only the main thread may use the bus's listener, and a match must not be removed while it
  // delivers.
  void updateMatchesLater() {
    RunLoop::main().perform([this] {
      Bus* bus = Bus::current();
      if (bus == nullptr) return;
      std::erase_if(matches_, [this](const auto& match) { return !isRegistered(match.first); });
      addMatches(*bus);
    });
  }

  void addMatches(Bus& bus) {
    for (const std::string& name : names()) {
      if (matches_.count(name) != 0) continue;
      try {
        matches_[name] = match(bus.listener(), name);
      } catch (const sdbus::Error&) {
        // The name cannot be matched, or the bus is gone, which the listener notices.
      }
    }
  }

  sdbus::Slot match(sdbus::IConnection& connection, const std::string& name) {
    return connection.addMatch(darwin::matchRule(name),
                               [this, name](sdbus::Message&) { deliver(name); });
  }

  void deliver(const std::string& name) {
    std::vector<DarwinNotifyCenter::Callback> callbacks;
    {
      std::lock_guard lock(mutex_);
      for (const Registration& registration : registrations_) {
        if (registration.name == name) callbacks.push_back(registration.callback);
      }
    }
    for (const auto& callback : callbacks) callback(name);
  }

  bool isRegistered(const std::string& name) {
    std::lock_guard lock(mutex_);
    return std::any_of(registrations_.begin(), registrations_.end(),
                       [&name](const auto& registration) { return registration.name == name; });
  }

  std::vector<std::string> names() {
    std::lock_guard lock(mutex_);
    std::vector<std::string> result;
    for (const Registration& registration : registrations_) result.push_back(registration.name);
    return result;
  }

  std::mutex mutex_;
  std::vector<Registration> registrations_;
  std::map<std::string, sdbus::Slot> matches_;
};

}  // namespace

DarwinNotifyCenter::DarwinNotifyCenter() = default;

DarwinNotifyCenter::~DarwinNotifyCenter() {
  Registry::instance().removeIf(
      [this](const Registration& registration) { return registration.center == this; });
}

void DarwinNotifyCenter::addObserver(const void* observer, const std::string& name,
                                     Callback callback) {
  Registry::instance().add({this, observer, name, std::move(callback)});
}

void DarwinNotifyCenter::removeEveryObserver(const void* observer) {
  Registry::instance().removeIf([this, observer](const Registration& registration) {
    return registration.center == this && registration.observer == observer;
  });
}

void DarwinNotifyCenter::post(const std::string& name) {
  if (Bus* bus = Bus::current()) {
    bus->emitSignal(darwin::path, darwin::interface, darwin::signal, name);
  }
}

}  // namespace platform
