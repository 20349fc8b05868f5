// Keeps pictures of a screen with their times as PNG files. One thread.
#pragma once

#include <chrono>
#include <filesystem>
#include <utility>
#include <vector>

#include "platform/image.h"
#include "tool/support/screen_pixels.h"

namespace tool {

class Recording {
 public:
  // Writes the pictures to this folder: frame-00001.png and so on.
  explicit Recording(std::filesystem::path folder) : folder_(std::move(folder)) {}

  // Adds a picture that is shown from one time to the other. If it looks like the last one, that
  // lasts longer instead. Requires rising times. Throws Failure if it is no picture, cannot be
  // written or has another size than the first one.
  void add(const ScreenPixels& picture, std::chrono::nanoseconds from,
           std::chrono::nanoseconds until);

  // Writes the list of the pictures, which ffmpeg's demuxer "concat" reads. unit: what times are
  // rounded to. The last picture lasts two at least: viewers show one of 1/100 s in a GIF for
  // longer. Throws Failure if it cannot be written. Requires a picture.
  void writeList(std::chrono::milliseconds unit);
  std::filesystem::path list() const { return folder_ / "frames.ffconcat"; }

  std::chrono::nanoseconds length() const { return end_; }
  int count() const { return static_cast<int>(times_.size()); }
  // Returns how long the last picture lasts, as the list says.
  std::chrono::milliseconds lengthOfLast() const { return lengthOfLast_; }

 private:
  const std::filesystem::path folder_;
  platform::ImageRef last_;
  // When the pictures begin.
  std::vector<std::chrono::nanoseconds> times_;
  std::chrono::nanoseconds end_{0};
  std::chrono::milliseconds lengthOfLast_{0};
};

}  // namespace tool
