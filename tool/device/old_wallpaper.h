// The wallpaper that an import replaces, kept so that it can be restored.
#pragma once

#include <string>

#include "settings/locations.h"
#include "tool/device/device_folder.h"

namespace tool {

// The GIF is kept as a link in the host folder, which the destructor deletes. The device must
// outlive this object.
class OldWallpaper {
 public:
  explicit OldWallpaper(const DeviceFolder& device) : device_(device) {}
  ~OldWallpaper();
  OldWallpaper(const OldWallpaper&) = delete;
  OldWallpaper& operator=(const OldWallpaper&) = delete;

  // Records the stored mode and location.
  void keepSettings();
  // Keeps the location's GIF, if there is one. Replaces the link of an import that was killed.
  void keepFile(const lumora::Location& location);

  // Returns true if the GIF was kept.
  bool hasFile() const { return hasFile_; }
  // Returns true if there was a GIF that could not be kept.
  bool isFileLost() const { return isFileLost_; }

  // Makes the kept GIF the file at this device path. Returns false if there is none. Throws Failure
  // if the file cannot be made.
  bool putFileAt(const std::string& path) const;
  // Stores the recorded mode and location. Throws Failure.
  void restoreSettings() const;

 private:
  const DeviceFolder& device_;
  std::string mode_;
  std::string location_;
  bool hasFile_ = false;
  bool isFileLost_ = false;
};

}  // namespace tool
