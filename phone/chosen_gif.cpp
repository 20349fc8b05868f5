#include "phone/chosen_gif.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <utility>

#include <unistd.h>

#include "command_line/count.h"
#include "command_line/failure.h"
#include "command_line/terminal.h"
#include "platform/autorelease_pool.h"
#include "platform/image_source.h"
#include "preferences/other_files.h"

namespace phone {
namespace {

using command_line::Failure;

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};

[[noreturn]] void failToRead(const std::string& name) {
  throw Failure("cannot read " + name + ": " + std::strerror(errno));
}

platform::Bytes contentsOf(std::FILE* file, const std::string& name) {
  // As much as the home screen takes on Linux.
  constexpr std::size_t maxSize = std::size_t{256} << 20;
  platform::Bytes bytes;
  std::uint8_t part[1 << 16];
  while (const std::size_t count = std::fread(part, 1, sizeof part, file)) {
    bytes.insert(bytes.end(), part, part + count);
    if (bytes.size() > maxSize)
      throw Failure("cannot read " + name + ": it is larger than 256 MiB");
  }
  if (std::ferror(file) != 0) failToRead(name);
  return bytes;
}

std::string startOf(const platform::Bytes& bytes) {
  const std::size_t count = std::min(bytes.size(), preferences::neededStart);
  return {bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(count)};
}

std::string problemOf(const std::string& start) {
  if (start.empty()) return "it is empty";
  if (!start.starts_with("GIF8")) return preferences::problemOfOtherFile(start);
  return "it is damaged: none of its frames can be shown";
}

void countFrames(ChosenGif& gif) {
  const auto source = platform::CGImageSource::createWithData(gif.data);
  gif.images = source ? source->count() : 0;
  for (int index = 0; index < gif.images; ++index) {
    const platform::NSAutoreleasePool pool;
    if (source->createImageAtIndex(index)) ++gif.frames;
  }
}

}  // namespace

ChosenGif checkGif(const std::string& name, platform::DataRef data, const std::string& start) {
  ChosenGif gif{name, std::move(data)};
  countFrames(gif);
  if (gif.frames == 0) throw Failure("cannot decode " + name + ": " + problemOf(start));
  if (gif.frames < gif.images) {
    const std::string problem = name + " is damaged: " + std::to_string(gif.frames) + " of " +
                                command_line::countOfFrames(gif.images) + " can be shown";
    std::fprintf(stderr, "lumora: %s\n", command_line::printable(problem, STDERR_FILENO).c_str());
  }
  return gif;
}

ChosenGif readGif(const std::string& path) {
  const bool isInput = path == "-";
  const std::string name = isInput ? "standard input" : path;
  const std::unique_ptr<std::FILE, CloseFile> opened(isInput ? nullptr
                                                             : std::fopen(path.c_str(), "rb"));
  if (!isInput && !opened) failToRead(name);
  platform::Bytes bytes = contentsOf(isInput ? stdin : opened.get(), name);
  const std::string start = startOf(bytes);
  return checkGif(name, platform::NSData::dataWithBytes(std::move(bytes)), start);
}

}  // namespace phone
