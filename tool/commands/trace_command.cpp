#include "tool/commands/trace_command.h"

#include <chrono>
#include <memory>

#include <nlohmann/json.hpp>

#include "command_line/event_line.h"
#include "host/control/trace_keys.h"
#include "tool/commands/live_output.h"
#include "tool/device/host_connection.h"

namespace tool {

using command_line::printEvent;

namespace {

using nlohmann::json;
using std::chrono::system_clock;
namespace event_keys = host::trace_event;

// Prints each hook once: one that is taken while this command starts is told twice.
class TracePrinter {
 public:
  void print(const json& event) {
    const auto number = event.find(event_keys::number);
    if (number != event.end() && *number < next_) return;
    if (number != event.end()) next_ = number->get<std::size_t>() + 1;
    const std::chrono::milliseconds time(event.value(event_keys::time, std::int64_t{0}));
    printEvent(system_clock::time_point(time), event.value(event_keys::text, ""));
  }

 private:
  std::size_t next_ = 0;
};

void traceHost(const DeviceFolder& device, bool isOnce) {
  const auto host = HostConnection::require(device);
  TracePrinter printer;
  if (!isOnce) {
    host->watchTrace([&printer](const std::string& event) {
      // Any program on the bus may send such a signal with other contents.
      const json parsed = json::parse(event, nullptr, false);
      if (parsed.is_object()) printer.print(parsed);
    });
    host->watch(
        [](const std::string& name) { printEvent(system_clock::now(), "notification: " + name); });
  }
  for (const json& event : json::parse(host->trace())) printer.print(event);
  if (!isOnce) followHost(*host);
}

}  // namespace

void addTraceCommand(CLI::App& lumora, Context& context) {
  auto isOnce = std::make_shared<bool>(false);
  auto* command = addCommand(lumora, context, "trace",
                             "print the hooks that extensions have taken and missed, and then each "
                             "notification and message",
                             [&context, isOnce] { traceHost(context.device(), *isOnce); });
  command->add_flag("--once", *isOnce, "print the hooks so far, and end");
}

}  // namespace tool
