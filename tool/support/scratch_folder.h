// Folders for the files of unfinished work.
#pragma once

#include <filesystem>

namespace tool {

// A temporary folder in another one. The destructor deletes it with its contents.
class ScratchFolder {
 public:
  // Throws Failure if it cannot be made.
  explicit ScratchFolder(const std::filesystem::path& parent);
  ~ScratchFolder();
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }
  // Keeps the folder under this path, where there may be an empty one, with the mode of a new
  // folder. Throws Failure if that fails. Requires the same file system.
  void keepAs(const std::filesystem::path& path);

 private:
  // Empty if it has been kept.
  std::filesystem::path path_;
};

}  // namespace tool
