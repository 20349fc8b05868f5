#include "tool/support/own_program.h"

#include <filesystem>

namespace tool {

std::string besideThisProgram(const char* name) {
  return std::filesystem::read_symlink("/proc/self/exe").replace_filename(name);
}

}  // namespace tool
