#include "tool/gif_file.h"

#include "platform/image_source.h"
#include "tool/failure.h"
#include "tool/user_file.h"

namespace tool {

Failure noPicture(const std::string& path) {
  return Failure(path + " gives no picture: it is no GIF, is damaged, or is too large");
}

ChosenGif readGif(const std::string& path) {
  ChosenGif gif;
  gif.data = openUserFile(path);
  auto source = platform::CGImageSource::createWithData(gif.data);
  if (!source || source->createImageAtIndex(0) == nullptr) {
    throw noPicture(path);
  }
  gif.frameCount = source->count();
  return gif;
}

}  // namespace tool
