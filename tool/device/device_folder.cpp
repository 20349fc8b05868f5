#include "tool/device/device_folder.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "command_line/failure.h"
#include "platform/file_manager.h"
#include "platform/linux/files/device_root.h"
#include "platform/linux/files/file_contents.h"
#include "tool/support/user_directories.h"

namespace tool {

using command_line::Failure;

namespace {

namespace fs = std::filesystem;

constexpr auto preferencesDirectory = "/var/mobile/Library/Preferences";
constexpr auto addressNote = "bus";
constexpr mode_t mineAlone = 0700;

fs::path chosenFolder(const std::string& given) {
  if (!given.empty()) return given;
  const char* root = std::getenv("LUMORA_ROOT");
  if (root != nullptr && *root != '\0') return root;
  return userDirectory("XDG_DATA_HOME", ".local/share") / "lumora";
}

}  // namespace

DeviceFolder::DeviceFolder(const std::string& given, IfMissing ifMissing) {
  const fs::path folder = chosenFolder(given);
  std::error_code error;
  if (ifMissing == IfMissing::Make) {
    fs::create_directories(fs::absolute(folder).parent_path(), error);
    // An existing folder keeps its mode.
    if (!error && mkdir(folder.c_str(), mineAlone) != 0 && errno != EEXIST) {
      error = std::error_code(errno, std::generic_category());
    }
    if (!error) path_ = fs::canonical(folder, error);
  } else {
    path_ = fs::weakly_canonical(fs::absolute(folder), error);
  }
  if (!error && fs::exists(path_, error) && !fs::is_directory(path_, error)) {
    error = std::make_error_code(std::errc::not_a_directory);
  }
  if (error) {
    throw Failure("cannot use " + folder.string() + " as the device folder: " + error.message());
  }
  platform::backend::setDeviceRoot(path_);
  if (ifMissing == IfMissing::Make) {
    const fs::path own = path_ / platform::backend::hostFolderName;
    if (mkdir(own.c_str(), mineAlone) != 0 && errno != EEXIST) makingError_ = errno;
    // If this fails, the first write into it reports the error.
    platform::createDirectoryAtPath(preferencesDirectory);
  }
  openHostFolder();
}

int DeviceFolder::openHostFolder() const {
  if (hostFolder_) return 0;
  const fs::path path = path_ / platform::backend::hostFolderName;
  platform::backend::FileDescriptor folder(
      open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
  struct stat status {};
  if (!folder || fstat(folder.get(), &status) != 0) return errno;
  if (status.st_uid != geteuid()) return EACCES;
  if ((status.st_mode & ~S_IFMT) != mineAlone) fchmod(folder.get(), mineAlone);
  hostFolder_ = std::move(folder);
  return 0;
}

int DeviceFolder::hostFolder() const {
  const int openError = openHostFolder();
  if (openError == 0) return hostFolder_.get();
  const int error = makingError_ != 0 ? makingError_ : openError;
  const std::string name = (path_ / platform::backend::hostFolderName).string();
  if (error == EACCES || error == EPERM) {
    throw Failure("cannot use " + name + ": the device belongs to another user");
  }
  throw Failure("cannot use " + name + ": " + std::strerror(error));
}

std::optional<std::string> DeviceFolder::note(const std::string& name) const {
  constexpr std::size_t maxLength = 1 << 16;
  // A missing or read-only device has no home screen.
  const int error = openHostFolder();
  if (error == ENOENT || error == EROFS) return std::nullopt;
  const auto file = platform::backend::openFileAt(hostFolder(), name, maxLength);
  const auto contents = file ? platform::backend::contentsOf(*file) : std::nullopt;
  if (!contents || contents->empty()) return std::nullopt;
  return std::string(contents->begin(), contents->end());
}

void DeviceFolder::setNote(const std::string& name, const std::string& text) const {
  const auto make = [&text](int directory, const std::string& newName) {
    const auto file = platform::backend::createFile(directory, newName);
    return file && platform::backend::writeAll(
                       file, {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
  };
  if (platform::backend::replaceFileAt(hostFolder(), name, make)) return;
  throw Failure("cannot write into " + (path_ / platform::backend::hostFolderName).string() + ": " +
                std::strerror(errno));
}

void DeviceFolder::removeNote(const std::string& name) const {
  unlinkat(hostFolder(), name.c_str(), 0);
}

std::optional<std::string> DeviceFolder::busAddress() const {
  return note(addressNote);
}

void DeviceFolder::setBusAddress(const std::string& address) const {
  setNote(addressNote, address);
}

void DeviceFolder::forgetBusAddress() const {
  removeNote(addressNote);
}

}  // namespace tool
