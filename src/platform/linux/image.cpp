#include "platform/image.h"

#include <utility>

#include "platform/file_manager.h"
#include "platform/image_source.h"

namespace platform {

ImageRef imageWithContentsOfFile(const std::string& path) {
  auto contents = contentsOfFile(path);
  if (!contents) return nullptr;
  auto source = CGImageSource::createWithData(std::move(*contents));
  return source ? source->createImageAtIndex(0) : nullptr;
}

}  // namespace platform
