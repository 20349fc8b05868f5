#include "host/displays/power_watch.h"

#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace host {
namespace {

constexpr auto propertiesInterface = "org.freedesktop.DBus.Properties";

struct Service {
  const char* name;
  const char* path;
  const char* interface;
  const char* property;
};
constexpr Service services[] = {
    {"org.freedesktop.UPower", "/org/freedesktop/UPower", "org.freedesktop.UPower", "OnBattery"},
    // The daemon of power profiles has two names; older versions have only the second.
    {"org.freedesktop.UPower.PowerProfiles", "/org/freedesktop/UPower/PowerProfiles",
     "org.freedesktop.UPower.PowerProfiles", "ActiveProfile"},
    {"net.hadess.PowerProfiles", "/net/hadess/PowerProfiles", "net.hadess.PowerProfiles",
     "ActiveProfile"},
};

// The value is that of OnBattery or of ActiveProfile.
bool asksToSave(const sdbus::Variant& value) {
  if (value.containsValueOfType<bool>()) return value.get<bool>();
  return value.containsValueOfType<std::string>() && value.get<std::string>() == "power-saver";
}

}  // namespace

PowerWatch::PowerWatch(std::function<void()> changed) : changed_(std::move(changed)) {
  static_assert(std::size(services) == serviceCount);
  try {
    bus_.emplace(sdbus::createSystemBusConnection());
    for (std::size_t service = 0; service < serviceCount; ++service) watch(service);
  } catch (const sdbus::Error&) {
    bus_.reset();
  }
}

bool PowerWatch::isSaving() const {
  return std::ranges::find(asksToSave_, true) != asksToSave_.end();
}

void PowerWatch::watch(std::size_t service) {
  sdbus::IProxy& proxy = bus_->addProxy(services[service].name, services[service].path);
  proxy.uponSignal("PropertiesChanged")
      .onInterface(propertiesInterface)
      .call([this, service, &proxy](const std::string&,
                                    const std::map<std::string, sdbus::Variant>&,
                                    const std::vector<std::string>&) { read(service, proxy); });
  proxy.finishRegistration();
  bus_->follow(services[service].name, [this, service, &proxy](bool isRunning) {
    // A question to a service that has ended would start it again.
    if (!isRunning) return note(service, false);
    read(service, proxy);
  });
  read(service, proxy);
}

// Does not wait for the answer, because the bus may have to start the service first.
void PowerWatch::read(std::size_t service, sdbus::IProxy& proxy) {
  proxy.callMethodAsync("Get")
      .onInterface(propertiesInterface)
      .withArguments(std::string(services[service].interface),
                     std::string(services[service].property))
      .uponReplyInvoke([this, service](const sdbus::Error* error, const sdbus::Variant& value) {
        note(service, error == nullptr && asksToSave(value));
      });
}

void PowerWatch::note(std::size_t service, bool asksToSave) {
  const bool wasSaving = isSaving();
  asksToSave_[service] = asksToSave;
  if (isSaving() != wasSaving) changed_();
}

}  // namespace host
