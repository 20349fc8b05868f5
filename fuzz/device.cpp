#include "fuzz/device.h"

#include <cstdlib>
#include <filesystem>

#include "platform/file_manager.h"
#include "platform/linux/device_root.h"
#include "platform/linux/file_contents.h"

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
    platform::setDeviceRoot(folder_);
  }
  ~Device() {
    std::error_code error;
    fs::remove_all(folder_, error);
  }
  Device(const Device&) = delete;
  Device& operator=(const Device&) = delete;

 private:
  fs::path folder_;
};

}  // namespace

void store(const std::uint8_t* data, std::size_t size, const std::string& path) {
  static const Device device;
  platform::createDirectoryAtPath(path.substr(0, path.rfind('/')));
  if (!platform::writeToFileAtomically(platform::Bytes(data, data + size), path)) std::abort();
}

}  // namespace fuzz
