#include "tool/frames_command.h"

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <memory>

#include "gifview/frame_cache.h"
#include "platform/linux/device_root.h"
#include "platform/linux/picture.h"
#include "tool/failure.h"
#include "tool/gif_file.h"
#include "tool/user_file.h"

namespace tool {
namespace {

namespace fs = std::filesystem;

// Frames for a person: sharp, and nobody else is told.
class QuietClient : public lumora::FrameExtractionClient {
 public:
  void setFrameCount(std::int32_t count) override { frameCount_ = count; }
  std::int32_t frameCount() const override { return frameCount_; }
  void frameFound() override { ++framesFound_; }
  float blur() override { return 0; }
  std::int32_t framesFound() const { return framesFound_; }

 private:
  std::int32_t frameCount_ = 0;
  std::int32_t framesFound_ = 0;
};

fs::path emptyFolder(const std::string& name) {
  std::error_code error;
  fs::create_directories(name, error);
  fs::path folder = fs::canonical(name, error);
  if (error || !fs::is_directory(folder, error)) {
    throw Failure("cannot use " + name + ": " + (error ? error.message() : "not a folder"));
  }
  if (!fs::is_empty(folder, error)) {
    throw Failure(name + " is not empty; name a new folder");
  }
  return folder;
}

void writeFrames(const std::string& gifPath, const std::string& folderName) {
  const platform::DataRef gif = openUserFile(gifPath);
  if (!platform::CGImageSource::createWithData(gif)) throw noPicture(gifPath);
  const bool isNewFolder = !fs::exists(folderName);
  const fs::path folder = emptyFolder(folderName);
  // Every path of the machine is a path of the device here.
  platform::setDeviceRoot("/");
  lumora::FrameCacheLayout layout(folder.string() + ".gif");
  layout.fullGIFPath = fs::canonical(gifPath).string();
  QuietClient client;
  lumora::rebuildFrameCache(layout, gif, client);
  if (client.framesFound() == 0) {
    for (const auto& entry : fs::directory_iterator(folder)) fs::remove_all(entry.path());
    if (isNewFolder) fs::remove(folder);
    throw noPicture(gifPath);
  }
  const auto durations = lumora::loadFrameDurations(layout);
  std::int32_t written = 0;
  // A damaged image leaves its number out.
  for (std::int32_t index = 0; index < client.frameCount(); ++index) {
    if (fs::exists(layout.framePath(index))) ++written;
  }
  if (!durations || written < client.framesFound())
    throw Failure("cannot write all frames to " + folderName + ": is there space?");
  std::printf("%d frames in %s\n", client.framesFound(), folderName.c_str());
}

int delayInCentiseconds(const platform::CGImageSource& source, int index) {
  constexpr double centisecondsPerSecond = 100;
  const auto properties = source.copyPropertiesAtIndex(index);
  const bool hasDelay = properties && properties->gif && properties->gif->unclampedDelayTime;
  if (!hasDelay) return 0;
  return static_cast<int>(
      std::lround(*properties->gif->unclampedDelayTime * centisecondsPerSecond));
}

void printRawFrames(const std::string& gifPath) {
  const ChosenGif gif = readGif(gifPath);
  const auto source = platform::CGImageSource::createWithData(gif.data);
  for (int index = 0; index < source->count(); ++index) {
    const auto image = source->createImageAtIndex(index);
    if (!image) continue;
    const platform::Bytes pixels = pixelsOf(*image);
    std::printf("F %d %d %d\n", image->width(), image->height(),
                delayInCentiseconds(*source, index));
    std::fwrite(pixels.data(), 1, pixels.size(), stdout);
  }
}

}  // namespace

void addFramesCommand(CLI::App& lumora, Context& context) {
  struct Words {
    std::string gif;
    std::string folder;
    bool isRaw = false;
  };
  auto words = std::make_shared<Words>();
  auto* command = addCommand(lumora, context, "frames",
                             "write the frames of a GIF, as a view makes them", [words] {
                               if (words->isRaw) {
                                 printRawFrames(words->gif);
                               } else {
                                 writeFrames(words->gif, words->folder);
                               }
                             });
  command->add_option("GIF", words->gif)->required();
  auto* folder = command->add_option("DIR", words->folder, "a new or empty folder");
  auto* raw = command->add_flag("--raw", words->isRaw,
                                "print them instead: a line `F WIDTH HEIGHT DELAY`, then RGBA");
  raw->excludes(folder);
  command->parse_complete_callback([words] {
    if (!words->isRaw && words->folder.empty()) throw CLI::RequiredError("DIR or --raw");
  });
}

}  // namespace tool
