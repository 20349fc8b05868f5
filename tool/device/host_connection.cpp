#include "tool/device/host_connection.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include <nlohmann/json.hpp>
#include <poll.h>
#include <utf8cpp/utf8.h>

#include "command_line/failure.h"
#include "host/control/control_names.h"
#include "host/control/status_keys.h"
#include "platform/linux/bus/bus.h"
#include "platform/linux/bus/darwin_bus_names.h"
#include "tool/device/bus_address.h"

namespace tool {

using command_line::ExitCode;
using command_line::Failure;

namespace {

namespace darwin = platform::backend::darwin;
namespace service = host::service;

std::chrono::microseconds microseconds(Seconds timeout) {
  // 0 would mean the bus library's default.
  constexpr Seconds minTimeout{0.001};
  return std::chrono::duration_cast<std::chrono::microseconds>(std::max(timeout, minTimeout));
}

// Returns true if the home screen has ended before it has replied. The bus daemon then sends the
// same error as for a timeout, with another text.
bool isAbandoned(const sdbus::Error& error) {
  return error.getName() == "org.freedesktop.DBus.Error.NoReply" &&
         error.getMessage().find("disconnected") != std::string::npos;
}

bool isTimeout(const sdbus::Error& error) {
  return error.getName() == "org.freedesktop.DBus.Error.Timeout" ||
         (error.getName() == "org.freedesktop.DBus.Error.NoReply" && !isAbandoned(error));
}

// Returns true if the bus knows no home screen, or the bus itself has ended.
bool hasEnded(const sdbus::Error& error) {
  return error.getName() == "org.freedesktop.DBus.Error.ServiceUnknown" ||
         error.getName() == "org.freedesktop.DBus.Error.NameHasNoOwner" ||
         error.getName() == "org.freedesktop.DBus.Error.Disconnected" ||
         error.getName() == "System.Error.ECONNRESET" ||
         error.getName() == "System.Error.ENOTCONN" || isAbandoned(error);
}

}  // namespace

HostConnection::HostConnection(std::unique_ptr<sdbus::IConnection> connection)
    : connection_(std::move(connection)),
      proxy_(sdbus::createProxy(*connection_, service::busName, service::path)),
      notifier_(sdbus::createObject(*connection_, darwin::path)) {}

std::unique_ptr<HostConnection> HostConnection::find(const DeviceFolder& device, Seconds timeout) {
  const auto printed = device.busAddress();
  const BusAddress address(printed.value_or(""));
  // The bus library could wait minutes for a daemon that does not answer, so check that first.
  constexpr Seconds maxLoginTime{10};
  const BusState state = address.state(std::min(timeout, maxLoginTime));
  if (state == BusState::Absent) return nullptr;
  const Failure silence("the message bus of " + device.path().string() +
                        " does not answer; if this persists, restart `lumora run`");
  if (state == BusState::Silent) throw silence;
  try {
    std::unique_ptr<HostConnection> host(
        new HostConnection(sdbus::createSessionBusConnectionWithAddress(address.address())));
    return host->serves(service::busName, timeout) ? std::move(host) : nullptr;
  } catch (const sdbus::Error& error) {
    if (isTimeout(error)) throw silence;
    return nullptr;
  }
}

std::unique_ptr<HostConnection> HostConnection::require(const DeviceFolder& device,
                                                        Seconds timeout) {
  if (auto host = find(device, timeout)) return host;
  throw Failure(
      "no home screen is running for " + device.path().string() + "; start one with: lumora run",
      ExitCode::NoHost);
}

bool HostConnection::serves(const std::string& name, Seconds timeout) {
  return platform::backend::nameHasOwner(*connection_, name, microseconds(timeout));
}

template <typename Use>
bool HostConnection::isAnswered(Seconds timeout, const std::string& method, Use use) {
  try {
    auto invoker = proxy_->callMethod(method);
    invoker.onInterface(service::interface).withTimeout(microseconds(timeout));
    use(invoker);
    return true;
  } catch (const sdbus::Error& error) {
    if (isTimeout(error)) return false;
    if (hasEnded(error)) throw Failure("the home screen has ended");
    throw Failure("the home screen refused: " + error.getMessage());
  }
}

template <typename Use>
void HostConnection::ask(Seconds timeout, const std::string& method, Use use) {
  if (isAnswered(timeout, method, use)) return;
  throw Failure(
      "the home screen did not answer before the timeout; if this persists, restart `lumora run`");
}

void HostConnection::call(const std::string& method, Seconds timeout) {
  ask(timeout, method, [](auto&) {});
}

void HostConnection::rotate(const std::string& orientation) {
  ask(usualTimeout, service::method::rotate,
      [&](auto& invoker) { invoker.withArguments(orientation); });
}

// The name of a file may be any bytes, a text of the bus may not.
void HostConnection::setWallpaperName(const std::string& name) {
  std::string valid;
  utf8::replace_invalid(name.begin(), name.end(), std::back_inserter(valid));
  ask(usualTimeout, service::method::setWallpaperName,
      [&](auto& invoker) { invoker.withArguments(valid); });
}

void HostConnection::setExceptedOutputs(const std::vector<std::string>& names) {
  ask(usualTimeout, service::method::setExceptedOutputs,
      [&](auto& invoker) { invoker.withArguments(names); });
}

void HostConnection::setBackdrop(const host::BackdropOptions& backdrop) {
  ask(usualTimeout, service::method::setBackdrop,
      [&](auto& invoker) { invoker.withArguments(host::textOf(backdrop)); });
}

void HostConnection::advance(std::chrono::nanoseconds span, Seconds timeout) {
  const auto limit = std::chrono::duration_cast<std::chrono::nanoseconds>(timeout);
  // The home screen gives up first and reports why.
  constexpr Seconds margin{2};
  ask(timeout + margin, service::method::advance, [&](auto& invoker) {
    invoker.withArguments(std::int64_t{span.count()}, std::int64_t{limit.count()});
  });
}

std::string HostConnection::status(Seconds timeout) {
  std::string report;
  ask(timeout, service::method::status, [&](auto& invoker) { invoker.storeResultsTo(report); });
  return report;
}

std::string HostConnection::trace() {
  std::string report;
  ask(usualTimeout, service::method::trace, [&](auto& invoker) { invoker.storeResultsTo(report); });
  return report;
}

void HostConnection::requirePhone() {
  if (nlohmann::json::parse(status()).value(host::status::display, "") !=
      host::status::displayDesktop) {
    return;
  }
  throw Failure(
      "a desktop has one wallpaper, without lock screen or dock; change it with: lumora set GIF");
}

bool HostConnection::settle(Seconds timeout) {
  bool isAtRest = false;
  auto use = [&isAtRest](auto& invoker) { invoker.storeResultsTo(isAtRest); };
  return isAnswered(timeout, service::method::settle, use) && isAtRest;
}

platform::backend::FileDescriptor HostConnection::screenshot() {
  sdbus::UnixFd png;
  ask(usualTimeout, service::method::screenshot,
      [&](auto& invoker) { invoker.storeResultsTo(png); });
  return platform::backend::FileDescriptor(png.release());
}

ScreenPixels HostConnection::pixels() {
  sdbus::UnixFd file;
  std::int32_t width = 0;
  std::int32_t height = 0;
  ask(usualTimeout, service::method::pixels,
      [&](auto& invoker) { invoker.storeResultsTo(file, width, height); });
  return {platform::backend::FileDescriptor(file.release()), width, height};
}

void HostConnection::post(const std::string& name, Seconds timeout) {
  try {
    auto signal = notifier_->createSignal(darwin::interface, darwin::signal);
    signal << name;
    notifier_->emitSignal(signal);
    // The answer to this call shows that the bus has received the signal.
    serves(service::busName, timeout);
  } catch (const sdbus::Error& error) {
    throw Failure("cannot post " + name + ": " + error.getMessage());
  }
}

void HostConnection::watch(std::function<void(const std::string&)> handler) {
  watchSignals(darwin::matchRule(), std::move(handler));
}

void HostConnection::watchTrace(std::function<void(const std::string&)> handler) {
  watchSignals(std::string("type='signal',interface='") + service::interface + "',member='" +
                   service::traced + "'",
               std::move(handler));
}

void HostConnection::watchSignals(const std::string& rule,
                                  std::function<void(const std::string&)> handler) {
  watching_.push_back(
      connection_->addMatch(rule, [handler = std::move(handler)](sdbus::Message& message) {
        // Any program on the bus may send such a signal with other contents.
        std::string text;
        try {
          message >> text;
        } catch (const sdbus::Error&) {
          return;
        }
        handler(text);
      }));
}

bool HostConnection::pump(std::chrono::steady_clock::time_point limit, int descriptor) {
  try {
    if (connection_->processPendingRequest()) {
      while (connection_->processPendingRequest()) {
      }
      return true;
    }
    pollfd descriptors[] = {{connection_->getEventLoopPollData().fd, POLLIN, 0},
                            {descriptor, POLLIN, 0}};
    const auto rest =
        std::chrono::ceil<std::chrono::milliseconds>(limit - std::chrono::steady_clock::now());
    constexpr std::int64_t maxPollTime = 3'600'000;
    poll(descriptors, std::size(descriptors),
         static_cast<int>(std::clamp<std::int64_t>(rest.count(), 0, maxPollTime)));
    while (connection_->processPendingRequest()) {
    }
    return true;
  } catch (const sdbus::Error&) {
    return false;
  }
}

}  // namespace tool
