#include "tool/commands/frames_command.h"

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <vector>

#include "command_line/count.h"
#include "command_line/failure.h"
#include "command_line/progress_bar.h"
#include "gifview/frame_cache.h"
#include "gifview/gif_frame_delay.h"
#include "platform/file_manager.h"
#include "platform/image_source.h"
#include "platform/linux/files/device_root.h"
#include "platform/linux/helper_thread.h"
#include "platform/linux/images/picture/picture.h"
#include "tool/device/cache_contents.h"
#include "tool/support/gif_file.h"
#include "tool/support/scratch_folder.h"

namespace tool {

using command_line::countOfFrames;
using command_line::Failure;
using command_line::ProgressBar;

namespace {

namespace fs = std::filesystem;

fs::path emptyFolder(const std::string& name) {
  std::error_code error;
  fs::create_directory(name, error);
  fs::path folder = error ? fs::path() : fs::canonical(name, error);
  if (!error && !fs::is_directory(folder, error))
    error = std::make_error_code(std::errc::not_a_directory);
  if (error) throw Failure("cannot use " + name + ": " + error.message());
  if (!fs::is_empty(folder, error)) throw Failure(name + " is not empty; name a new folder");
  return folder;
}

// Making a cache replaces its whole folder. The user's folder must stay, so the cache is made in a
// scratch folder and its files are moved.
int makeFrames(const ChosenGif& gif, platform::CGImageSource& source, const fs::path& scratch,
               const fs::path& folder) {
  // The device is the whole machine here.
  platform::backend::setDeviceRoot("/");
  const lumora::FrameCacheLayout layout((scratch / folder.filename()).string() + ".gif");
  platform::createDirectoryAtPath(layout.GIFDirectory);
  auto copying = platform::backend::startOnHelperThread(
      [&] { return gif.data->writeToFileAtomically(layout.savedGIFPath); });
  std::vector<double> durations;
  const ProgressBar bar("making frames", source.count());
  for (std::int32_t index = 0; index < source.count(); ++index) {
    const auto image = source.createImageAtIndex(index);
    // The number of a damaged image has no file.
    if (!image) continue;
    durations.push_back(lumora::CGImageSourceGetGifFrameDelay(source, index));
    lumora::writeFrame(layout, index, image);
    bar.show(index + 1);
  }
  lumora::writeFrameDurations(layout, durations);
  checkMemory(gif.name);
  const CacheContents contents = contentsOf(layout);
  if (!copying.get() || !contents.isComplete())
    throw Failure("cannot write all frames to " + folder.string() + "; check the free space");
  for (const auto& entry : fs::directory_iterator(layout.GIFDirectory)) {
    fs::rename(entry.path(), folder / entry.path().filename());
  }
  return contents.written;
}

void writeFrames(const std::string& gifPath, const std::string& folderName) {
  const ChosenGif gif = openGif(gifPath);
  const auto source = framesOf(gif, Wanted::AnyFrame);
  const fs::path folder = emptyFolder(folderName);
  const ScratchFolder scratch(folder);
  const int frames = makeFrames(gif, *source, scratch.path(), folder);
  warnOfDamage(gif);
  std::printf("%s in %s\n", countOfFrames(frames).c_str(), folderName.c_str());
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
  const ChosenGif gif = openGif(gifPath);
  const auto source = framesOf(gif, Wanted::AnyFrame);
  for (int index = 0; index < source->count(); ++index) {
    const auto image = source->createImageAtIndex(index);
    if (!image) continue;
    const platform::Bytes pixels = platform::backend::pixelsOf(*image);
    std::printf("F %d %d %d\n", image->width(), image->height(),
                delayInCentiseconds(*source, index));
    std::fwrite(pixels.data(), 1, pixels.size(), stdout);
  }
  checkMemory(gifPath);
  warnOfDamage(gif);
}

}  // namespace

void addFramesCommand(CLI::App& lumora, Context& context) {
  struct FramesOptions {
    std::string gif;
    std::string folder;
    bool isRaw = false;
  };
  auto options = std::make_shared<FramesOptions>();
  auto* command =
      addCommand(lumora, context, "frames", "write a GIF's frames as PNG files", [options] {
        if (options->isRaw) {
          printRawFrames(options->gif);
        } else {
          writeFrames(options->gif, options->folder);
        }
      });
  command->add_option("GIF", options->gif, "GIF file; - is standard input")->required();
  auto* folder = command->add_option("DIR", options->folder, "new or empty folder to write to");
  auto* raw =
      command->add_flag("--raw", options->isRaw,
                        "print instead, for each frame, `F WIDTH HEIGHT DELAY` and RGBA pixels");
  raw->excludes(folder);
  command->parse_complete_callback([options] {
    if (!options->isRaw && options->folder.empty()) throw CLI::RequiredError("DIR or --raw");
  });
}

}  // namespace tool
