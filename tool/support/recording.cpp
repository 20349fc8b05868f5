#include "tool/support/recording.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <memory>
#include <string>
#include <utility>

#include <fcntl.h>

#include "command_line/failure.h"
#include "platform/linux/files/data.h"
#include "platform/linux/images/picture/picture.h"

namespace tool {

using command_line::Failure;

namespace {

using platform::backend::PictureShape;
using platform::backend::Strip;
using Pixel = std::uint32_t;

std::string nameOfFrame(int number) {
  char name[32];
  std::snprintf(name, sizeof name, "frame-%05d.png", number);
  return name;
}

std::uint8_t byteAt(Pixel pixel, int index) {
  return static_cast<std::uint8_t>(pixel >> (8 * index));
}

// Reads the strip's rows from the file. Returns false if they are not all there.
bool readStrip(Strip& strip, const ScreenPixels& picture, int firstRow) {
  std::vector<Pixel> pixels(static_cast<std::size_t>(picture.width));
  const std::span bytes(reinterpret_cast<std::uint8_t*>(pixels.data()),
                        pixels.size() * sizeof(Pixel));
  for (int y = 0; y < strip.rowCount(); ++y) {
    const std::size_t offset = static_cast<std::size_t>(firstRow + y) * bytes.size();
    if (readAt(picture.file, offset, bytes) != bytes.size()) return false;
    std::uint8_t* target = strip.row(y);
    for (const Pixel pixel : pixels) {
      for (const int channel : {2, 1, 0}) *target++ = byteAt(pixel, channel);
      *target++ = UINT8_MAX;
    }
  }
  return true;
}

// Returns the picture, or nullptr if it cannot be read. Shares equal strips with the last one,
// which has the same shape or is nullptr, so that they are not compressed again.
platform::ImageRef imageOf(const ScreenPixels& picture, const platform::UIImage* last) {
  const PictureShape shape{picture.width, picture.height, platform::backend::PixelFormat::RGBA};
  platform::backend::Strips strips;
  for (int index = 0; index < shape.stripCount(); ++index) {
    auto strip = shape.makeStrip(index);
    if (!readStrip(*strip, picture, index * shape.rowsPerStrip())) return nullptr;
    strips.push_back(std::move(strip));
    if (last == nullptr) continue;
    const auto& old = last->impl().strips[static_cast<std::size_t>(index)];
    if (std::ranges::equal(old->bytes(), strips.back()->bytes())) strips.back() = old;
  }
  return platform::backend::makeImage(shape, nullptr, std::move(strips));
}

std::int64_t unitsIn(std::chrono::nanoseconds time, std::chrono::nanoseconds unit) {
  return (time + unit / 2) / unit;
}

std::string secondsOf(std::chrono::milliseconds time) {
  char text[32];
  std::snprintf(text, sizeof text, "%.3f", std::chrono::duration<double>(time).count());
  return text;
}

}  // namespace

void Recording::add(const ScreenPixels& picture, std::chrono::nanoseconds from,
                    std::chrono::nanoseconds until) {
  if (!platform::backend::isOfUsableSize(picture.width, picture.height)) {
    throw Failure("the screen has no usable size");
  }
  if (last_ && (last_->width() != picture.width || last_->height() != picture.height)) {
    throw Failure("the screen has been turned or resized, which ends the recording");
  }
  auto image = imageOf(picture, last_.get());
  if (!image) throw Failure("the home screen gave an incomplete picture");
  end_ = until;
  if (last_ && image->impl().strips == last_->impl().strips) return;
  const auto png = UIImagePNGRepresentation(*image);
  const std::string file = folder_ / nameOfFrame(count() + 1);
  if (!png || !png->impl().makeFile(AT_FDCWD, file)) {
    throw Failure("cannot write " + file + "; check the free space");
  }
  last_ = std::move(image);
  times_.push_back(from);
}

// Rounding the times instead of the lengths keeps errors from adding up.
void Recording::writeList(std::chrono::milliseconds unit) {
  std::ofstream file(list());
  file << "ffconcat version 1.0\n";
  for (int index = 0; index < count(); ++index) {
    const auto at = times_.begin() + index;
    const bool isLast = index + 1 == count();
    const std::int64_t units = unitsIn(isLast ? end_ : at[1], unit) - unitsIn(*at, unit);
    lengthOfLast_ = std::max<std::int64_t>(units, isLast ? 2 : 0) * unit;
    // Without a frame rate, ffmpeg rounds times to 1/25 s.
    file << "file " << nameOfFrame(index + 1) << "\noption framerate 1000\nduration "
         << secondsOf(lengthOfLast_) << "\n";
  }
  file.close();
  if (!file) throw Failure("cannot write " + list().string() + "; check the free space");
}

}  // namespace tool
