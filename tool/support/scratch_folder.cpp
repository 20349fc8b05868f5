#include "tool/support/scratch_folder.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string>

#include <sys/stat.h>

#include "command_line/failure.h"

namespace tool {

using command_line::Failure;

namespace {

namespace fs = std::filesystem;

}  // namespace

ScratchFolder::ScratchFolder(const fs::path& parent) {
  std::string name = (parent / ".lumora-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) {
    throw Failure("cannot write to " + parent.string() + ": " + std::strerror(errno));
  }
  path_ = name;
}

ScratchFolder::~ScratchFolder() {
  std::error_code error;
  if (!path_.empty()) fs::remove_all(path_, error);
}

void ScratchFolder::keepAs(const fs::path& path) {
  const mode_t mask = umask(0);
  umask(mask);
  constexpr mode_t all = 0777;
  chmod(path_.c_str(), all & ~mask);
  std::error_code error;
  fs::rename(path_, path, error);
  if (error) throw Failure("cannot write " + path.string() + ": " + error.message());
  path_.clear();
}

}  // namespace tool
