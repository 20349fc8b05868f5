#include "host/displays/wayland/sway_background.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>

namespace host::wayland {
namespace {

namespace fs = std::filesystem;

bool isSwaybg(const fs::path& process) {
  std::string name;
  std::ifstream(process / "comm") >> name;
  return name == "swaybg";
}

// Only processes of the same user can be read.
bool hasVariable(const fs::path& process, const std::string& variable) {
  std::ifstream environment(process / "environ", std::ios::binary);
  for (std::string entry; std::getline(environment, entry, '\0');) {
    if (entry == variable) return true;
  }
  return false;
}

}  // namespace

bool hasSwayBackground() {
  const char* session = std::getenv("SWAYSOCK");
  if (session == nullptr) return false;
  const std::string variable = std::string("SWAYSOCK=") + session;
  std::error_code error;
  const fs::directory_iterator processes("/proc", error);
  return std::ranges::any_of(processes, [&variable](const fs::directory_entry& process) {
    return isSwaybg(process.path()) && hasVariable(process.path(), variable);
  });
}

}  // namespace host::wayland
