#include "tool/device/frame_caches.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <memory>
#include <string_view>

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include "gifview/frame_cache.h"
#include "platform/file_manager.h"
#include "platform/linux/files/device_root.h"
#include "platform/linux/files/file_contents.h"
#include "settings/locations.h"

namespace tool {
namespace {

struct CloseDirectory {
  void operator()(DIR* directory) const { closedir(directory); }
};

// Returns true if the file ends with the empty chunk that ends every PNG. A file that was cut
// short, or never reached the disk, does not.
bool isWholePng(int directory, const std::string& name) {
  constexpr std::string_view end("\0\0\0\0IEND\xae\x42\x60\x82", 12);
  const auto file = platform::backend::openFileAt(directory, name);
  if (!file || file->size < end.size()) return false;
  std::array<std::uint8_t, end.size()> found{};
  platform::backend::readAt(file->descriptor, file->size - found.size(), found);
  return std::equal(end.begin(), end.end(), found.begin(),
                    [](char one, std::uint8_t other) { return one == static_cast<char>(other); });
}

// Returns the number of frames in a cache's directory, or -1 if one of them is incomplete.
int countFrames(const std::string& path) {
  const auto location = platform::backend::findItem(path);
  if (!location) return 0;
  const int descriptor = openat(location->directory.get(), location->name.c_str(),
                                O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
  const std::unique_ptr<DIR, CloseDirectory> directory(fdopendir(descriptor));
  if (!directory) return 0;
  int count = 0;
  while (const dirent* entry = readdir(directory.get())) {
    const std::string name = entry->d_name;
    if (!name.ends_with(".png")) continue;
    if (!isWholePng(descriptor, name)) return -1;
    ++count;
  }
  return count;
}

}  // namespace

bool removeUnfinishedCaches() {
  bool wereAny = false;
  for (const lumora::Location& location : lumora::locations) {
    const lumora::FrameCacheLayout layout(location.gifPath);
    if (!platform::fileExistsAtPath(layout.savedGIFPath)) continue;
    const auto durations = lumora::loadFrameDurations(layout);
    if (durations && static_cast<int>(durations->size()) == countFrames(layout.GIFDirectory)) {
      continue;
    }
    platform::removeItemAtPath(layout.GIFDirectory);
    std::printf("frames of %s were missing; all of them are made again\n", location.gifPath);
    wereAny = true;
  }
  return wereAny;
}

}  // namespace tool
