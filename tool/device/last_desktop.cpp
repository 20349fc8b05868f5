#include "tool/device/last_desktop.h"

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

namespace tool {
namespace {

// One argument a line.
constexpr auto note = "desktop";

std::optional<host::HostOptions> parse(const std::string& lines) {
  std::vector<std::string> arguments;
  std::istringstream stream(lines);
  for (std::string line; std::getline(stream, line);) arguments.push_back(line);
  CLI::App parser;
  host::HostOptions options;
  host::addHostOptions(parser, options);
  try {
    // The parser expects the words in reverse order.
    std::ranges::reverse(arguments);
    parser.parse(std::move(arguments));
  } catch (const CLI::Error&) {
    // Another version may have stored them.
    return std::nullopt;
  }
  return options;
}

}  // namespace

void storeLastDesktop(const DeviceFolder& device, const host::HostOptions& options) {
  std::string lines;
  for (const std::string& argument : host::hostArguments(options)) lines += argument + '\n';
  device.setNote(note, lines);
}

host::HostOptions lastDesktop(const DeviceFolder& device) {
  const auto lines = device.note(note);
  host::HostOptions options = (lines ? parse(*lines) : std::nullopt).value_or(host::HostOptions());
  options.display = host::DisplayKind::Desktop;
  return options;
}

}  // namespace tool
