#include "tool/device/cache_contents.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include <dirent.h>
#include <fcntl.h>

#include "platform/linux/files/device_root.h"
#include "platform/linux/files/file_contents.h"

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

// Returns the number of complete frames in a cache's directory.
int countFrames(const lumora::FrameCacheLayout& cache) {
  const auto place = platform::backend::findItem(cache.GIFDirectory);
  if (!place) return 0;
  const int descriptor = openat(place->directory.get(), place->name.c_str(),
                                O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
  const std::unique_ptr<DIR, CloseDirectory> directory(fdopendir(descriptor));
  if (!directory) return 0;
  int count = 0;
  while (const dirent* entry = readdir(directory.get())) {
    const std::string name = entry->d_name;
    // The copy of the GIF has no extension, but the base name may look as if it had one.
    const bool isFrame = name.ends_with(".png") && name != cache.baseGIFName;
    if (isFrame && isWholePng(descriptor, name)) ++count;
  }
  return count;
}

}  // namespace

CacheContents contentsOf(const lumora::FrameCacheLayout& cache) {
  CacheContents contents;
  if (const auto durations = lumora::loadFrameDurations(cache)) {
    contents.listed = static_cast<int>(durations->size());
  }
  contents.written = countFrames(cache);
  return contents;
}

}  // namespace tool
