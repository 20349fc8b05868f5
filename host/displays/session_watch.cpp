#include "host/displays/session_watch.h"

#include <chrono>
#include <cstdlib>
#include <map>
#include <string>
#include <utility>

#include "platform/linux/main_loop/run_loop.h"

namespace host {
namespace {

using platform::backend::RunLoop;

// The main thread waits for answers, so this is short.
constexpr std::chrono::milliseconds maxAnswerTime{500};

constexpr auto loginService = "org.freedesktop.login1";
constexpr auto sessionInterface = "org.freedesktop.login1.Session";

struct Saver {
  const char* service;
  const char* path;
};
constexpr Saver savers[] = {
    {"org.freedesktop.ScreenSaver", "/org/freedesktop/ScreenSaver"},
    {"org.gnome.ScreenSaver", "/org/gnome/ScreenSaver"},
};

std::string sessionName() {
  const char* name = std::getenv("XDG_SESSION_ID");
  return name == nullptr || *name == '\0' ? "auto" : name;
}

}  // namespace

SessionWatch::SessionWatch(std::function<void()> changed) : changed_(std::move(changed)) {
  // Without a bus, the user is never away as far as that bus could tell.
  try {
    watchSession();
  } catch (const sdbus::Error&) {
    system_.proxies.clear();
  }
  try {
    watchSavers();
  } catch (const sdbus::Error&) {
    user_.proxies.clear();
  }
}

SessionWatch::~SessionWatch() {
  for (const Connection* connection : {&system_, &user_}) {
    if (connection->descriptor >= 0) RunLoop::main().removeSource(connection->descriptor);
  }
}

void SessionWatch::watchSession() {
  system_.bus = sdbus::createSystemBusConnection();
  system_.bus->setMethodCallTimeout(maxAnswerTime);
  auto manager = sdbus::createProxy(*system_.bus, loginService, "/org/freedesktop/login1");
  sdbus::ObjectPath path;
  manager->callMethod("GetSession")
      .onInterface("org.freedesktop.login1.Manager")
      .withArguments(sessionName())
      .storeResultsTo(path);
  system_.proxies.push_back(sdbus::createProxy(*system_.bus, loginService, path));
  sdbus::IProxy& session = *system_.proxies.back();
  session.uponSignal("PropertiesChanged")
      .onInterface("org.freedesktop.DBus.Properties")
      .call([this, &session](const std::string&, const std::map<std::string, sdbus::Variant>&,
                             const std::vector<std::string>&) {
        readSession(session);
        changed_();
      });
  session.finishRegistration();
  readSession(session);
  listen(system_);
}

void SessionWatch::readSession(sdbus::IProxy& session) {
  try {
    isLocked_ = session.getProperty("LockedHint").onInterface(sessionInterface).get<bool>();
    isActive_ = session.getProperty("Active").onInterface(sessionInterface).get<bool>();
  } catch (const sdbus::Error&) {
    isLocked_ = false;
    isActive_ = true;
  }
}

void SessionWatch::watchSavers() {
  user_.bus = sdbus::createSessionBusConnection();
  user_.bus->setMethodCallTimeout(maxAnswerTime);
  for (const auto& [service, path] : savers) {
    user_.proxies.push_back(sdbus::createProxy(*user_.bus, service, path));
    user_.proxies.back()->uponSignal("ActiveChanged").onInterface(service).call([this](bool isOn) {
      isSaverOn_ = isOn;
      changed_();
    });
    user_.proxies.back()->finishRegistration();
  }
  listen(user_);
}

void SessionWatch::listen(Connection& connection) {
  connection.descriptor = connection.bus->getEventLoopPollData().fd;
  RunLoop::main().addSource(connection.descriptor, [&connection] {
    bool handled = false;
    try {
      while (connection.bus->processPendingRequest()) handled = true;
    } catch (const sdbus::Error&) {
      RunLoop::main().removeSource(connection.descriptor);
      connection.descriptor = -1;
    }
    return handled;
  });
}

}  // namespace host
