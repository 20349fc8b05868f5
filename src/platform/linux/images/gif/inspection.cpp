#include "platform/linux/images/gif/inspection.h"

#include "platform/linux/images/gif/file.h"
#include "platform/linux/images/gif/lzw.h"

namespace platform::backend::gif {

Inspection inspect(const NSData& data) {
  Inspection inspection;
  const auto file = parse(data.impl());
  if (!file) return inspection;
  inspection.all = static_cast<int>(file->images.size());
  inspection.hasTrailer = file->hasTrailer;
  IndexBuffer indices;
  for (const SubImage& image : file->images) {
    const int rows = decodeImage(data.impl(), image, indices);
    if (rows > 0 && rows == image.height) {
      ++inspection.whole;
    } else if (rows > 0) {
      ++inspection.partial;
    }
  }
  return inspection;
}

}  // namespace platform::backend::gif
