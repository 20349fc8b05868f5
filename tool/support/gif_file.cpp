#include "tool/support/gif_file.h"

#include <cstdio>

#include <unistd.h>

#include "platform/image_source.h"
#include "platform/linux/images/gif/file.h"
#include "platform/linux/images/gif/inspection.h"
#include "platform/linux/out_of_memory.h"
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

std::string frames(int count) {
  return std::to_string(count) + (count == 1 ? " frame" : " frames");
}

std::string lossIn(const platform::backend::gif::Inspection& gif) {
  std::string loss;
  auto add = [&loss](const std::string& text) { loss += (loss.empty() ? "" : "; ") + text; };
  if (gif.shown() < gif.all)
    add(std::to_string(gif.shown()) + " of " + frames(gif.all) + " can be shown");
  if (gif.partial > 0) add(frames(gif.partial) + " only in part");
  if (!gif.hasTrailer) add("the file is cut short after " + frames(gif.all));
  return loss;
}

}  // namespace

ChosenGif readGif(const std::string& path, Wanted wanted) {
  ChosenGif gif{path, openUserFile(path), 0};
  auto source = platform::CGImageSource::createWithData(gif.data);
  const bool isOfUse = source && gives(*source, wanted);
  checkMemory(path);
  if (!isOfUse) throw Failure("cannot decode " + path + ": not a GIF, damaged, or too large");
  gif.frameCount = source->count();
  return gif;
}

void checkMemory(const std::string& path) {
  if (platform::backend::timesOutOfMemory() > 0) throw Failure("not enough memory for " + path);
}

int countShownFrames(const ChosenGif& gif) {
  const auto found = platform::backend::gif::inspect(*gif.data);
  // Files of other formats are one picture.
  if (found.all == 0) return gif.frameCount;
  if (!found.isSound()) {
    const std::string line = "lumora: " + gif.path + " is damaged: " + lossIn(found);
    std::fprintf(stderr, "%s\n", printable(line, STDERR_FILENO).c_str());
  }
  return found.shown();
}

void warnOfDamage(const ChosenGif& gif) {
  if (platform::backend::gif::timesDamaged() > 0) countShownFrames(gif);
}

}  // namespace tool
