#include "tool/device/extension_libraries.h"

#include <filesystem>

#include <unistd.h>

#include "tool/support/own_program.h"
#include "tool/support/user_file.h"

namespace tool {

// Installed apart from the programs; built beside them.
std::string ownLibrary() {
  std::string built = besideThisProgram("Lumora8.so");
  if (access(built.c_str(), F_OK) == 0) return built;
  return besideThisProgram(LUMORA_LIBRARY_DIR_FROM_PROGRAMS "/Lumora8.so");
}

std::vector<std::string> librariesFor(const std::vector<std::string>& words) {
  if (words.empty()) return {ownLibrary()};
  std::vector<std::string> libraries;
  for (const std::string& word : words) {
    if (word == noLibraryWord) continue;
    if (word == ownLibraryWord) {
      libraries.push_back(ownLibrary());
      continue;
    }
    openUserFile(word);
    libraries.push_back(std::filesystem::absolute(word));
  }
  return libraries;
}

}  // namespace tool
