// The folder under which the device's absolute paths live, a jail: whatever a device path says,
// with ".." or through symbolic links, nothing outside the folder is reached. Links below the root
// are never followed, ".." above it stays at it.
#pragma once

#include <optional>
#include <string>
#include <utility>

namespace platform::backend {

// The folder below the root where the host keeps what is its own; no device path leads there.
constexpr auto hostFolderName = ".host";

// Closes its descriptor when it goes.
class FileDescriptor {
 public:
  explicit FileDescriptor(int value = -1) : value_(value) {}
  ~FileDescriptor();
  FileDescriptor(FileDescriptor&& other) noexcept;
  FileDescriptor& operator=(FileDescriptor&& other) noexcept;
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;

  int get() const { return value_; }
  // From now on the caller closes it.
  int release() { return std::exchange(value_, -1); }
  explicit operator bool() const { return value_ >= 0; }

 private:
  int value_;
};

// The directory that holds an item, and the item's name in it; the item itself may be missing.
struct ItemLocation {
  FileDescriptor directory;
  std::string name;
};

// To be called once, before any file is used. The folder must exist; "/" makes device paths the
// machine's own.
void setDeviceRoot(const std::string& folder);

// The host's folder, itself no link; no descriptor if there is none.
FileDescriptor openHostFolder();

// Nothing if the path is the root itself or in the host's folder, if it contains a NUL, or if a
// directory on the way is missing or is a link.
std::optional<ItemLocation> locateItem(const std::string& devicePath);
// The same, with missing directories on the way made.
std::optional<ItemLocation> locateItemMakingDirectories(const std::string& devicePath);

}  // namespace platform::backend
