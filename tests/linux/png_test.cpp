// Frames as PNG files, which this reader and libpng decode without loss.

#include <future>
#include <random>

#include <gtest/gtest.h>
#include <png.h>
#include <sys/stat.h>

#include "platform/linux/files/file_contents.h"
#include "platform/linux/freed_memory.h"
#include "platform/linux/images/picture/picture.h"
#include "platform/linux/images/png/deflate.h"
#include "platform/linux/images/png/reader.h"
#include "tests/fixture/stage.h"

namespace {

using namespace platform;
using namespace platform::backend;
using testing_stage::DeviceRoot;

constexpr int width = 333;
constexpr int height = 917;

Bytes fileOf(const ImageRef& image) {
  const DeviceRoot root;
  EXPECT_TRUE(UIImagePNGRepresentation(*image)->writeToFileAtomically("/picture.png"));
  return *contentsOfFile("/picture.png");
}

ImageRef read(const Bytes& file) {
  return png::decodePng(*NSData::dataWithBytes(file));
}

Bytes readByLibpng(const Bytes& file, png_uint_32 format = PNG_FORMAT_RGBA) {
  png_image header{};
  header.version = PNG_IMAGE_VERSION;
  if (!png_image_begin_read_from_memory(&header, file.data(), file.size())) return {};
  header.format = format;
  Bytes pixels(PNG_IMAGE_SIZE(header));
  if (!png_image_finish_read(&header, nullptr, pixels.data(), 0, nullptr)) return {};
  return pixels;
}

// A uniform upper part and noise below.
ImageRef indexedImage(std::size_t colors, unsigned seed = 1, bool isTranslucent = true) {
  std::mt19937 random(seed);
  auto palette = std::make_shared<Palette>();
  palette->count = colors;
  for (std::size_t index = isTranslucent ? 1 : 0; index < colors; ++index) {
    const auto value = static_cast<std::uint8_t>(index);
    palette->colors[index] = {value, static_cast<std::uint8_t>(255 - value), 7, 255};
  }
  const PictureShape shape{width, height, PixelFormat::Indexed};
  Strips strips;
  for (int index = 0; index < shape.stripCount(); ++index) {
    auto strip = shape.makeStrip(index);
    for (int row = 0; row < strip->rowCount(); ++row) {
      for (int x = 0; x < width; ++x) {
        strip->row(row)[x] = static_cast<std::uint8_t>(index < 2 ? 0 : random() % colors);
      }
    }
    strips.push_back(std::move(strip));
  }
  return makeImage(shape, palette, std::move(strips));
}

ImageRef colorfulImage(bool isOpaque) {
  std::mt19937 random(3);
  Bytes pixels(static_cast<std::size_t>(width) * height * 4);
  for (std::size_t at = 0; at < pixels.size(); at += 4) {
    pixels[at + 3] = isOpaque ? 255 : static_cast<std::uint8_t>(1 + random() % 255);
    for (std::size_t channel = 0; channel < 3; ++channel) {
      pixels[at + channel] = static_cast<std::uint8_t>(at / 500 + random() % 9);
    }
  }
  return imageFromPixels(width, height, pixels);
}

TEST(Png, IsReadBackExactlyHereAndByLibpng) {
  std::vector<ImageRef> images{colorfulImage(true), colorfulImage(false),
                               indexedImage(200, 1, false)};
  for (const std::size_t colors : {1U, 2U, 3U, 4U, 5U, 16U, 17U, 255U, 256U}) {
    images.push_back(indexedImage(colors));
  }
  images.push_back(imageFromPixels(1, 1, {9, 8, 7, 255}));
  for (const ImageRef& image : images) {
    const Bytes file = fileOf(image);
    EXPECT_EQ(readByLibpng(file), pixelsOf(*image));
    ASSERT_NE(read(file), nullptr);
    EXPECT_EQ(pixelsOf(*read(file)), pixelsOf(*image));
  }
}

TEST(Png, CompressesWellInReusedMemory) {
  platform::backend::keepFreedMemory();
  const Bytes raw = pixelsOf(*indexedImage(3));
  // A new thread has its own compressor, in memory that was used before.
  auto sizeAfter = [&raw](std::uint16_t rubbish) {
    auto compress = [&raw, rubbish] {
      { const std::vector<std::uint16_t> used(1 << 20, rubbish); }
      return platform::backend::png::deflatePiece(raw).size();
    };
    return std::async(std::launch::async, compress).get();
  };
  for (const std::uint16_t rubbish : {1, 3, 9}) EXPECT_LT(sizeAfter(rubbish), 2 * sizeAfter(0));
}

TEST(Png, CanComeFromLibpng) {
  const ImageRef image = colorfulImage(false);
  const Bytes pixels = pixelsOf(*image);
  png_image header{};
  header.version = PNG_IMAGE_VERSION;
  header.width = width;
  header.height = height;
  header.format = PNG_FORMAT_RGBA;
  png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(header);
  Bytes file(size);
  ASSERT_TRUE(png_image_write_to_memory(&header, file.data(), &size, 0, pixels.data(), 0, nullptr));
  file.resize(size);
  EXPECT_EQ(pixelsOf(*read(file)), pixels);
}

TEST(Png, IsRejectedIfTruncatedOrDamaged) {
  for (const ImageRef& image : {indexedImage(200, 1, false), colorfulImage(true)}) {
    const Bytes file = fileOf(image);
    for (std::size_t size = 0; size + 12 < file.size(); size += file.size() / 50) {
      EXPECT_EQ(read(Bytes(file.begin(), file.begin() + static_cast<long>(size))), nullptr);
    }
    for (std::size_t at = 0; at < file.size(); at += file.size() / 200) {
      Bytes damaged = file;
      damaged[at] ^= 4;
      EXPECT_EQ(read(damaged), nullptr) << at;
    }
  }
}

TEST(Png, SharesUnchangedStripsWithThePreviousImage) {
  const ImageRef first = read(fileOf(indexedImage(40, 1)));
  const ImageRef second = read(fileOf(indexedImage(40, 2)));
  const Strips& before = first->impl().strips;
  const Strips& now = second->impl().strips;
  ASSERT_GT(before.size(), 3U);
  for (std::size_t index = 0; index < before.size(); ++index) {
    EXPECT_EQ(before[index] == now[index], index < 2) << index;
  }
  // Equal indices with another palette are not shared.
  const ImageRef recolored = read(fileOf(indexedImage(41, 1)));
  EXPECT_NE(recolored->impl().strips.front(), before.front());
}

TEST(Png, LinksEqualFramesUntilOneIsModified) {
  const DeviceRoot root;
  const auto png = UIImagePNGRepresentation(*indexedImage(9));
  auto fileNumber = [&root](const char* path) {
    struct stat status {};
    EXPECT_EQ(stat(root(path).c_str(), &status), 0);
    return status.st_ino;
  };
  for (const char* path : {"/one.png", "/two.png", "/two.png"}) {
    EXPECT_TRUE(png->writeToFileAtomically(path));
  }
  EXPECT_EQ(fileNumber("/one.png"), fileNumber("/two.png"));
  // Rewriting one file leaves the other unchanged.
  EXPECT_TRUE(writeToFileAtomically({1}, "/two.png"));
  EXPECT_TRUE(NSData::dataWithContentsOfFile("/one.png")->isEqualToData(*png));
  root.write("/one.png", Bytes(png->length(), 0));
  EXPECT_TRUE(png->writeToFileAtomically("/three.png"));
  EXPECT_TRUE(NSData::dataWithContentsOfFile("/three.png")->isEqualToData(*png));
  for (const auto& entry : std::filesystem::directory_iterator(root("/"))) {
    EXPECT_NE(entry.path().extension(), ".tmp");
  }
}

}  // namespace
