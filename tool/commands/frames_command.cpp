#include "tool/commands/frames_command.h"

#include <cmath>
#include <cstdio>
#include <memory>

#include "platform/image_source.h"
#include "platform/linux/images/picture/picture.h"
#include "tool/device/frame_files.h"
#include "tool/support/failure.h"
#include "tool/support/gif_file.h"

namespace tool {
namespace {

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
