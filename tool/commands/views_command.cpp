#include "tool/commands/views_command.h"

#include <cstdio>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>
#include <unistd.h>

#include "command_line/json_text.h"
#include "command_line/terminal.h"
#include "gifview/description_keys.h"
#include "host/control/status_keys.h"
#include "tool/device/host_connection.h"

namespace tool {

using command_line::dumped;
using command_line::printable;

namespace {

using nlohmann::ordered_json;
namespace reported = host::status;

// Returns "SBDockView (host::DockView) 390x96 at (0, 748), tag 3, hidden".
std::string textOfView(const ordered_json& view) {
  const auto frame = view.value(reported::frame, std::vector<double>(4));
  const std::string identifier = view.value(lumora::description::identifier, "");
  std::ostringstream text;
  text << view.value(reported::className, "") << " (" << view.value(reported::type, "") << ") "
       << frame[2] << "x" << frame[3] << " at (" << frame[0] << ", " << frame[1] << ")";
  if (const int tag = view.value(reported::tag, 0)) text << ", tag " << tag;
  if (!identifier.empty()) text << ", " << identifier;
  if (view.value(reported::hidden, false)) text << ", hidden";
  return text.str();
}

void printTree(const ordered_json& views) {
  std::vector<std::size_t> depths;
  for (const auto& view : views) {
    const auto& parent = view[reported::parent];
    depths.push_back(parent.is_null() ? 0 : depths.at(parent.get<std::size_t>()) + 1);
    std::printf("%s%s\n", std::string(2 * depths.back(), ' ').c_str(),
                printable(textOfView(view), STDOUT_FILENO).c_str());
  }
}

void printViews(const DeviceFolder& device, bool asJson) {
  const auto report = ordered_json::parse(HostConnection::require(device)->status());
  const ordered_json& views = report.at(reported::views);
  if (asJson) {
    std::printf("%s\n", dumped(views, 2).c_str());
  } else {
    printTree(views);
  }
}

}  // namespace

void addViewsCommand(CLI::App& lumora, Context& context) {
  auto asJson = std::make_shared<bool>(false);
  auto* command =
      addCommand(lumora, context, "views", "print the tree of views with their classes and frames",
                 [&context, asJson] { printViews(context.device(), *asJson); });
  command->add_flag("--json", *asJson,
                    "print one JSON array, parents first, siblings from back to front");
}

}  // namespace tool
