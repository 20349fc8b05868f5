#include "settings_window/gif_list.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <system_error>

namespace settings_window {
namespace {

namespace fs = std::filesystem;

bool isGIF(const fs::directory_entry& entry) {
  std::string extension = entry.path().extension().string();
  std::ranges::transform(extension, extension.begin(),
                         [](unsigned char letter) { return std::tolower(letter); });
  std::error_code error;
  return extension == ".gif" && entry.is_regular_file(error);
}

std::vector<std::string> gifsIn(const std::string& folder) {
  struct Found {
    fs::file_time_type time;
    std::string path;
  };
  std::vector<Found> found;
  std::error_code error;
  fs::directory_iterator entry(folder, fs::directory_options::skip_permission_denied, error);
  for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
    std::error_code unreadable;
    if (isGIF(*entry)) found.push_back({entry->last_write_time(unreadable), entry->path()});
  }
  std::ranges::sort(found, std::ranges::greater(), &Found::time);
  std::vector<std::string> paths(found.size());
  std::ranges::transform(found, paths.begin(), &Found::path);
  return paths;
}

}  // namespace

std::vector<std::string> listGIFs(const std::string& pictures, const std::string& samples,
                                  std::size_t maxCount) {
  std::vector<std::string> paths = gifsIn(pictures);
  const std::vector<std::string> installed = gifsIn(samples);
  paths.resize(std::min(paths.size(), maxCount - std::min(maxCount, installed.size())));
  paths.insert(paths.end(), installed.begin(), installed.end());
  return paths;
}

}  // namespace settings_window
