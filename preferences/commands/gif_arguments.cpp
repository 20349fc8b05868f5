#include "preferences/commands/gif_arguments.h"

#include <utility>

#include "command_line/one_of.h"
#include "preferences/location_names.h"

namespace preferences {
namespace {

// Returns what is wrong with the name of a location, or nothing.
std::string problemWithLocation(std::string& name) {
  return command_line::takeWord(locationNames, name);
}

// A single argument is the GIF.
void readArguments(std::string& location, std::string& path) {
  if (location.empty()) throw CLI::RequiredError("GIF");
  if (path.empty()) path = std::exchange(location, "shared");
  const std::string problem = problemWithLocation(location);
  if (!problem.empty()) throw CLI::ValidationError("LOCATION", problem);
  std::string copy = path;
  if (problemWithLocation(copy).empty()) throw CLI::RequiredError("GIF");
}

}  // namespace

void addLocationAndGif(CLI::App* command, std::string& location, std::string& path) {
  command->add_option("LOCATION", location, "wallpaper to change")
      ->default_str("shared")
      ->type_name("shared|lockscreen|homescreen");
  // Required, but the parser takes a single word for the location.
  command->add_option("GIF", path, "GIF file; - is standard input")->option_text("REQUIRED");
  command->parse_complete_callback([&location, &path] { readArguments(location, path); });
}

}  // namespace preferences
