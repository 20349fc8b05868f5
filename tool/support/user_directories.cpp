#include "tool/support/user_directories.h"

#include <cstdlib>

#include "command_line/failure.h"

namespace tool {

using command_line::Failure;

std::filesystem::path userDirectory(const char* variable, const char* belowHome) {
  const char* named = std::getenv(variable);
  if (named != nullptr && std::filesystem::path(named).is_absolute()) return named;
  const char* home = std::getenv("HOME");
  if (home == nullptr || *home == '\0') {
    throw Failure("the home directory is unknown: pass --root DIR or set HOME");
  }
  return std::filesystem::path(home) / belowHome;
}

}  // namespace tool
