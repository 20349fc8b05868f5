#include "platform/linux/png.h"

#include <png.h>

#include "platform/linux/gif_file.h"
#include "platform/linux/out_of_memory.h"

namespace platform {

ImageRef decodePng(const Bytes& bytes) {
  png_image header{};
  header.version = PNG_IMAGE_VERSION;
  if (!png_image_begin_read_from_memory(&header, bytes.data(), bytes.size())) return nullptr;
  header.format = PNG_FORMAT_RGBA;
  UIImage image{static_cast<int>(header.width), static_cast<int>(header.height), {}};
  if (std::int64_t{image.width} * image.height <= gif::mostPixels) {
    image.pixels = unlessOutOfMemory([&header] { return Bytes(PNG_IMAGE_SIZE(header)); });
  }
  if (image.pixels.empty()) {
    png_image_free(&header);
    return nullptr;
  }
  if (!png_image_finish_read(&header, nullptr, image.pixels.data(), 0, nullptr)) return nullptr;
  return std::make_shared<UIImage>(std::move(image));
}

Bytes UIImagePNGRepresentation(const UIImage& image) {
  png_image header{};
  header.version = PNG_IMAGE_VERSION;
  header.width = static_cast<png_uint_32>(image.width);
  header.height = static_cast<png_uint_32>(image.height);
  header.format = PNG_FORMAT_RGBA;
  header.flags = PNG_IMAGE_FLAG_FAST;
  if (image.pixels.empty()) return {};
  // Room for the worst case, so that the picture is compressed once.
  png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(header);
  Bytes bytes = unlessOutOfMemory([size] { return Bytes(size); });
  if (bytes.empty()) return bytes;
  if (!png_image_write_to_memory(&header, bytes.data(), &size, 0, image.pixels.data(), 0,
                                 nullptr)) {
    return {};
  }
  bytes.resize(size);
  return bytes;
}

}  // namespace platform
