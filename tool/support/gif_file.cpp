#include "tool/support/gif_file.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <string_view>
#include <utility>

#include <unistd.h>

#include "platform/image_source.h"
#include "platform/linux/files/byte_reader.h"
#include "platform/linux/images/gif/file.h"
#include "platform/linux/images/gif/inspection.h"
#include "platform/linux/images/picture/picture.h"
#include "platform/linux/out_of_memory.h"
#include "tool/support/count.h"
#include "tool/support/terminal.h"
#include "tool/support/user_file.h"

namespace tool {
namespace {

bool gives(platform::CGImageSource& source, Wanted wanted) {
  const int count = wanted == Wanted::FirstFrame ? 1 : source.count();
  for (int index = 0; index < count; ++index) {
    if (source.createImageAtIndex(index)) return true;
  }
  return false;
}

std::string lossIn(const platform::backend::gif::Inspection& gif) {
  std::string loss;
  auto add = [&loss](const std::string& text) { loss += (loss.empty() ? "" : "; ") + text; };
  if (gif.shown() < gif.all)
    add(std::to_string(gif.shown()) + " of " + countOfFrames(gif.all) + " can be shown");
  if (gif.partial > 0) add(countOfFrames(gif.partial) + " only in part");
  if (!gif.hasTrailer) add("the file is cut short after " + countOfFrames(gif.all));
  return loss;
}

// Returns the format that the bytes begin with, as far as users may take it for a GIF; else "".
std::string otherFormat(std::string_view start) {
  if (start.starts_with("RIFF") &&
      start.substr(std::min(start.size(), std::size_t{8}), 4) == "WEBP") {
    return "WebP";
  }
  if (start.starts_with("\xff\xd8\xff")) return "JPEG";
  if (start.substr(std::min(start.size(), std::size_t{4}), 4) == "ftyp") return "MP4 or AVIF";
  if (start.starts_with("\x1a\x45\xdf\xa3")) return "WebM";
  if (start.starts_with("<svg") || start.starts_with("<?xml")) return "SVG";
  return "";
}

// Returns why no image can be made of the file.
std::string problemOf(const platform::NSData& data) {
  if (data.length() == 0) return "it is empty";
  // The signature, then width and height of the screen.
  std::array<std::uint8_t, 12> bytes{};
  platform::backend::ByteReader reader(data.impl());
  const std::size_t count = reader.read(bytes);
  const std::string_view start(reinterpret_cast<const char*>(bytes.data()), count);
  const std::string other = otherFormat(start);
  if (!other.empty()) return "it is " + other + ", not a GIF; convert it, for example with ffmpeg";
  if (!start.starts_with("GIF8")) return "it is not a GIF";
  const int width = bytes[6] | bytes[7] << 8;
  const int height = bytes[8] | bytes[9] << 8;
  if (width > 0 && height > 0 && !platform::backend::isOfUsableSize(width, height)) {
    return "it is too large: " + std::to_string(width) + "x" + std::to_string(height) + " pixels";
  }
  return "it is damaged";
}

}  // namespace

ChosenGif readGif(const std::string& path, Wanted wanted) {
  if (path == "-") return checkGif("standard input", readInput(), wanted);
  return checkGif(path, openUserFile(path), wanted);
}

ChosenGif checkGif(const std::string& name, platform::DataRef data, Wanted wanted) {
  ChosenGif gif{name, std::move(data)};
  auto source = platform::CGImageSource::createWithData(gif.data);
  const bool isOfUse = source && gives(*source, wanted);
  checkMemory(gif.name);
  if (!isOfUse) throw Failure("cannot decode " + gif.name + ": " + problemOf(*gif.data));
  return gif;
}

void checkMemory(const std::string& name) {
  if (platform::backend::timesOutOfMemory() > 0) throw Failure("not enough memory for " + name);
}

int countShownFrames(const ChosenGif& gif) {
  const auto found = platform::backend::gif::inspect(*gif.data);
  // Files of other formats are one picture.
  if (found.all == 0) return 1;
  if (!found.isSound()) {
    const std::string line = "lumora: " + gif.name + " is damaged: " + lossIn(found);
    std::fprintf(stderr, "%s\n", printable(line, STDERR_FILENO).c_str());
  }
  return found.shown();
}

void warnOfDamage(const ChosenGif& gif) {
  if (platform::backend::gif::timesDamaged() > 0) countShownFrames(gif);
}

}  // namespace tool
