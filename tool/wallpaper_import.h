// Handing a GIF to the running home screen, and seeing to it that all of its frames are made. The
// home screen works on, and keeps silent about what goes wrong; so this looks at what is there
// afterwards.
#pragma once

#include <optional>
#include <string>

#include "settings/screen_location.h"
#include "tool/file_lock.h"
#include "tool/gif_file.h"
#include "tool/host_connection.h"

namespace tool {

class WallpaperImport {
 public:
  // All must outlive this object.
  WallpaperImport(const DeviceFolder& device, HostConnection& host, lumora::ScreenLocation location,
                  const ChosenGif& gif, const TimeLimit& limit);
  // Lets go of the old wallpaper.
  ~WallpaperImport();
  WallpaperImport(const WallpaperImport&) = delete;
  WallpaperImport& operator=(const WallpaperImport&) = delete;

  // Waits until nobody else imports and no frames are being made; then puts the GIF into its place.
  // Throws Failure; then nothing has changed, unless the message says so.
  void handOver();

  // Waits until the home screen has made all the frames that the GIF can give, and hands it over
  // again where something has cut that short. Then they play if their screen is shown. Returns how
  // many there are. Throws Failure; the old wallpaper is back then, unless the message says
  // otherwise.
  int finish();

 private:
  void awaitRest(const char* problem);
  void storeFile(const platform::NSData& contents);
  void storeChoice();
  void announce();
  bool isTaken() const;
  int timesOutOfMemory();
  void restore();
  [[noreturn]] void giveUp(const std::string& problem);

  const DeviceFolder& device_;
  HostConnection& host_;
  const lumora::ScreenLocation location_;
  const ChosenGif& gif_;
  const TimeLimit& limit_;
  FileLock lock_;
  std::string oldMode_;
  std::string oldLocation_;
  bool hasOldFile_ = false;
  int timesOutOfMemory_ = 0;
  int framesFound_ = 0;
  bool isAnnounced_ = false;
};

// "shared", "lock screen" or "home screen".
const char* placeName(lumora::ScreenLocation location);

}  // namespace tool
