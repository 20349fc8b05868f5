#include "fuzz/device.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "platform/file_manager.h"
#include "platform/linux/files/device_root.h"
#include "platform/linux/files/file_contents.h"

namespace fuzz {
namespace {

namespace fs = std::filesystem;

class Device {
 public:
  Device() {
    std::error_code error;
    const fs::path memory = "/dev/shm";
    const fs::path place = fs::is_directory(memory, error) ? memory : fs::temp_directory_path();
    std::string folder = place / "lumora-fuzz-XXXXXX";
    if (mkdtemp(folder.data()) == nullptr) std::abort();
    folder_ = folder;
    fs::create_directory(root());
    std::ofstream(folder_ / neighbor) << neighbor;
    platform::backend::setDeviceRoot(root());
  }
  ~Device() {
    std::error_code error;
    fs::remove_all(folder_, error);
  }
  Device(const Device&) = delete;
  Device& operator=(const Device&) = delete;

  void clear() const {
    for (const auto& entry : fs::directory_iterator(root())) fs::remove_all(entry.path());
  }

  bool isAlone() const {
    const auto entries = std::distance(fs::directory_iterator(folder_), fs::directory_iterator());
    std::string contents;
    std::ifstream(folder_ / neighbor) >> contents;
    return entries == 2 && contents == neighbor && fs::is_directory(root());
  }

 private:
  static constexpr auto neighbor = "neighbor";

  fs::path root() const { return folder_ / "device"; }

  fs::path folder_;
};

const Device& device() {
  static const Device device;
  return device;
}

}  // namespace

void store(const std::uint8_t* data, std::size_t size, const std::string& path) {
  device();
  platform::createDirectoryAtPath(path.substr(0, path.rfind('/')));
  if (!platform::backend::writeToFileAtomically(platform::Bytes(data, data + size), path))
    std::abort();
}

void clearDevice() {
  device().clear();
}

void checkSurroundings() {
  if (!device().isAlone()) std::abort();
}

}  // namespace fuzz
