#include "tool/device/wallpaper_names.h"

#include <filesystem>
#include <sstream>
#include <system_error>

#include <sys/stat.h>

#include "command_line/failure.h"
#include "platform/linux/files/device_root.h"

namespace tool {

using command_line::Failure;

namespace {

std::string noteOf(const lumora::Location& location) {
  return std::string("name.") + location.identifier;
}

std::optional<struct stat> find(const lumora::Location& location) {
  const auto place = platform::backend::findItem(location.gifPath);
  struct stat status {};
  if (!place || fstatat(place->directory.get(), place->name.c_str(), &status, 0) != 0) {
    return std::nullopt;
  }
  return status;
}

// Returns what is different for another file, or "" if there is none.
std::string stampOf(const lumora::Location& location) {
  const auto status = find(location);
  if (!status) return "";
  std::ostringstream stamp;
  stamp << status->st_size << ' ' << status->st_mtim.tv_sec << ' ' << status->st_mtim.tv_nsec;
  return stamp.str();
}

// Returns the name so that it means the same file in every folder, if it is that of a file.
std::string completed(const std::string& name) {
  std::error_code error;
  const auto path = std::filesystem::absolute(name, error);
  return std::filesystem::exists(path, error) ? path.lexically_normal().string() : name;
}

}  // namespace

void nameWallpaper(const DeviceFolder& device, const lumora::Location& location,
                   const std::string& name) {
  try {
    device.setNote(noteOf(location), stampOf(location) + '\n' + completed(name));
  } catch (const Failure&) {
    // The wallpaper is set even so.
  }
}

std::optional<std::string> nameOfWallpaper(const DeviceFolder& device,
                                           const lumora::Location& location) {
  const std::string stamp = stampOf(location);
  const auto note = stamp.empty() ? std::nullopt : device.note(noteOf(location));
  if (!note || !note->starts_with(stamp + '\n')) return std::nullopt;
  return note->substr(stamp.size() + 1);
}

void tellWallpaperName(HostConnection& host, const DeviceFolder& device) {
  std::string names;
  for (const lumora::Location& location : lumora::locations) {
    const bool isUsed = lumora::isUsed(location, lumora::wallpaperMode());
    const auto path = isUsed ? nameOfWallpaper(device, location) : std::nullopt;
    const std::string name = std::filesystem::path(path.value_or("")).filename();
    if (!name.empty() && name != names) names += (names.empty() ? "" : ", ") + name;
  }
  host.setWallpaperName(names);
}

std::uint64_t sizeOfWallpaper(const lumora::Location& location) {
  const auto status = find(location);
  return status ? static_cast<std::uint64_t>(status->st_size) : 0;
}

}  // namespace tool
