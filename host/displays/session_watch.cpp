#include "host/displays/session_watch.h"

#include <cstdlib>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace host {
namespace {

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
    system_.reset();
  }
  try {
    watchSavers();
  } catch (const sdbus::Error&) {
    user_.reset();
  }
}

void SessionWatch::watchSession() {
  system_.emplace(sdbus::createSystemBusConnection());
  sdbus::IProxy& manager = system_->addProxy(loginService, "/org/freedesktop/login1");
  sdbus::ObjectPath path;
  manager.callMethod("GetSession")
      .onInterface("org.freedesktop.login1.Manager")
      .withArguments(sessionName())
      .storeResultsTo(path);
  sdbus::IProxy& session = system_->addProxy(loginService, path);
  session.uponSignal("PropertiesChanged")
      .onInterface("org.freedesktop.DBus.Properties")
      .call([this, &session](const std::string&, const std::map<std::string, sdbus::Variant>&,
                             const std::vector<std::string>&) {
        readSession(session);
        changed_();
      });
  session.finishRegistration();
  readSession(session);
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
  user_.emplace(sdbus::createSessionBusConnection());
  for (const auto& [service, path] : savers) {
    sdbus::IProxy& saver = user_->addProxy(service, path);
    saver.uponSignal("ActiveChanged").onInterface(service).call([this](bool isOn) {
      isSaverOn_ = isOn;
      changed_();
    });
    saver.finishRegistration();
  }
}

}  // namespace host
