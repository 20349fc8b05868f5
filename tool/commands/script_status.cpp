#include "tool/commands/script_status.h"

#include <string>

#include "host/control/status_keys.h"
#include "tool/commands/status_command.h"
#include "tool/device/host_connection.h"

namespace tool {
namespace {

using nlohmann::ordered_json;
namespace reported = host::status;

ordered_json viewsByName(const ordered_json& views) {
  ordered_json named = ordered_json::object();
  const auto add = [&named](const std::string& name, const ordered_json& view) {
    if (!named.contains(name)) named[name] = view;
  };
  for (const auto& view : views) {
    const int tag = view.value(reported::tag, 0);
    add(view.value(reported::className, ""), view);
    if (tag != 0) add(std::to_string(tag), view);
  }
  return named;
}

}  // namespace

ordered_json scriptStatus(const DeviceFolder& device) {
  const auto host = HostConnection::find(device);
  ordered_json status = currentStatus(device, host.get());
  if (host) {
    status[reported::views] = viewsByName(ordered_json::parse(host->status()).at(reported::views));
  }
  return status;
}

}  // namespace tool
