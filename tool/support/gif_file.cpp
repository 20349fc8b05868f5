#include "tool/support/gif_file.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <string_view>
#include <utility>

#include <unistd.h>

#include "command_line/count.h"
#include "command_line/terminal.h"
#include "platform/image_source.h"
#include "platform/linux/files/byte_reader.h"
#include "platform/linux/images/gif/file.h"
#include "platform/linux/images/gif/inspection.h"
#include "platform/linux/images/picture/picture.h"
#include "platform/linux/out_of_memory.h"
#include "preferences/other_files.h"
#include "tool/support/user_file.h"

namespace tool {

using command_line::countOfFrames;
using command_line::Failure;
using command_line::printable;

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

// Returns the file's first bytes, at most preferences::neededStart.
std::string startOf(const platform::NSData& data) {
  std::array<std::uint8_t, preferences::neededStart> bytes{};
  platform::backend::ByteReader reader(data.impl());
  const std::size_t count = reader.read(bytes);
  return {reinterpret_cast<const char*>(bytes.data()), count};
}

// Returns "" if the size that the header states can be used.
std::string problemOfSize(std::string_view start) {
  const auto byteAt = [start](std::size_t at) {
    return at < start.size() ? static_cast<std::uint8_t>(start[at]) : 0;
  };
  const int width = byteAt(6) | byteAt(7) << 8;
  const int height = byteAt(8) | byteAt(9) << 8;
  if (width == 0 || height == 0 || platform::backend::isOfUsableSize(width, height)) return "";
  return "it is too large: " + std::to_string(width) + "x" + std::to_string(height) +
         " pixels; make it smaller";
}

std::string problemOfFrames(const platform::NSData& data) {
  const auto found = platform::backend::gif::inspect(data);
  if (found.all == 0) return "it is damaged: it contains no frame";
  if (found.shown() == 0) return "it is damaged: none of its frames can be shown";
  return "it is damaged: its first frame cannot be shown";
}

// Returns why no image can be made of the file.
std::string problemOf(const platform::NSData& data) {
  if (data.length() == 0) return "it is empty";
  const std::string start = startOf(data);
  if (!start.starts_with("GIF8")) return preferences::problemOfOtherFile(start);
  const std::string problem = problemOfSize(start);
  return problem.empty() ? problemOfFrames(data) : problem;
}

}  // namespace

ChosenGif openGif(const std::string& path) {
  if (path == "-") return {"standard input", readInput()};
  return {path, openUserFile(path)};
}

std::unique_ptr<platform::CGImageSource> framesOf(const ChosenGif& gif, Wanted wanted) {
  auto source = platform::CGImageSource::createWithData(gif.data);
  const bool isOfUse = source && gives(*source, wanted);
  checkMemory(gif.name);
  if (!isOfUse) throw Failure("cannot decode " + gif.name + ": " + problemOf(*gif.data));
  return source;
}

ChosenGif readGif(const std::string& path) {
  ChosenGif gif = openGif(path);
  framesOf(gif, Wanted::FirstFrame);
  return gif;
}

ChosenGif checkGif(const std::string& name, platform::DataRef data) {
  ChosenGif gif{name, std::move(data)};
  framesOf(gif, Wanted::FirstFrame);
  return gif;
}

void checkMemory(const std::string& name) {
  if (platform::backend::timesOutOfMemory() > 0) throw Failure("not enough memory for " + name);
}

FrameCheck checkFrames(const ChosenGif& gif) {
  const auto found = platform::backend::gif::inspect(*gif.data);
  // Files of other formats are one picture.
  if (found.all == 0) return {1, ""};
  return {found.shown(), found.isSound() ? "" : gif.name + " is damaged: " + lossIn(found)};
}

void printDamage(const FrameCheck& check) {
  if (check.damage.empty()) return;
  const std::string line = "lumora: " + check.damage;
  std::fprintf(stderr, "%s\n", printable(line, STDERR_FILENO).c_str());
}

void warnOfDamage(const ChosenGif& gif) {
  if (platform::backend::gif::timesDamaged() > 0) printDamage(checkFrames(gif));
}

}  // namespace tool
