#include "platform/image.h"

#include "platform/image_source.h"

namespace platform {

ImageRef imageWithContentsOfFile(const std::string& path) {
  const auto contents = NSData::dataWithContentsOfFile(path);
  const auto source = contents ? CGImageSource::createWithData(contents) : nullptr;
  return source ? source->createImageAtIndex(0) : nullptr;
}

}  // namespace platform
