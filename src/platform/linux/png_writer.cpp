#include <algorithm>
#include <array>
#include <span>

#include <zlib.h>

#include "platform/image.h"
#include "platform/linux/deflate.h"
#include "platform/linux/out_of_memory.h"
#include "platform/linux/png_format.h"
#include "platform/linux/png_rows.h"

namespace platform {
namespace {

using namespace png;

std::array<std::uint8_t, 4> bigEndian(std::size_t value) {
  return {static_cast<std::uint8_t>(value >> 24), static_cast<std::uint8_t>(value >> 16),
          static_cast<std::uint8_t>(value >> 8), static_cast<std::uint8_t>(value)};
}

void append(Bytes& file, std::span<const std::uint8_t> bytes) {
  file.insert(file.end(), bytes.begin(), bytes.end());
}

void appendChunk(Bytes& file, const ChunkName& name, std::span<const std::uint8_t> content) {
  append(file, bigEndian(content.size()));
  append(file, name);
  append(file, content);
  append(file, bigEndian(platform::crc32(platform::crc32(0, name), content)));
}

bool isOpaque(const UIImage::Impl& picture) {
  return std::ranges::all_of(picture.strips, [&picture](const auto& strip) {
    for (int row = 0; row < strip->rowCount(); ++row) {
      std::uint8_t alpha = 255;
      const std::uint8_t* pixel = strip->row(row);
      for (int x = 0; x < picture.shape.width; ++x) {
        alpha &= pixel[static_cast<std::size_t>(x) * sizeof(RGBAColor) + 3];
      }
      if (alpha != 255) return false;
    }
    return true;
  });
}

RowCoding codingOf(const UIImage::Impl& picture) {
  if (picture.shape.format == PixelFormat::RGBA) {
    return isOpaque(picture) ? RowCoding::RGB : RowCoding::RGBA;
  }
  if (picture.palette->count <= 2) return RowCoding::Indexed1;
  if (picture.palette->count <= 4) return RowCoding::Indexed2;
  if (picture.palette->count <= 16) return RowCoding::Indexed4;
  return RowCoding::Indexed8;
}

void appendHeader(Bytes& file, const PictureShape& shape, RowCoding coding) {
  Bytes header;
  append(header, bigEndian(static_cast<std::size_t>(shape.width)));
  append(header, bigEndian(static_cast<std::size_t>(shape.height)));
  const CodingInHeader inHeader = headerOf(coding);
  // Compression, filter and interlace methods are 0.
  append(header, std::array<std::uint8_t, 5>{inHeader.bitDepth, inHeader.colorType, 0, 0, 0});
  appendChunk(file, headerChunk, header);
}

void appendPalette(Bytes& file, const Palette& palette) {
  Bytes colors;
  Bytes alphas;
  std::size_t lastTranslucent = 0;
  for (std::size_t index = 0; index < palette.count; ++index) {
    const RGBAColor& color = palette.colors[index];
    append(colors, std::span(color).first(3));
    alphas.push_back(color[3]);
    if (color[3] != 255) lastTranslucent = index + 1;
  }
  // Those left out are opaque.
  alphas.resize(lastTranslucent);
  appendChunk(file, paletteChunk, colors);
  if (!alphas.empty()) appendChunk(file, alphaChunk, alphas);
}

std::shared_ptr<const CompressedRows> compressed(const Strip& strip, RowCoding coding, int width) {
  auto rows = strip.compressed();
  if (!rows || rows->coding != coding) {
    rows = compressRows(strip, coding, width);
    strip.setCompressed(rows);
  }
  return rows;
}

void appendPixels(Bytes& file, const UIImage::Impl& picture, RowCoding coding) {
  appendChunk(file, dataChunk, zlibHeader);
  uLong adler = 1;
  for (const auto& strip : picture.strips) {
    const auto rows = compressed(*strip, coding, picture.shape.width);
    appendChunk(file, dataChunk, rows->deflated);
    adler = adler32_combine(adler, rows->adler, static_cast<z_off_t>(rows->length));
  }
  Bytes end(emptyFinalBlock.begin(), emptyFinalBlock.end());
  append(end, bigEndian(adler));
  appendChunk(file, dataChunk, end);
}

Bytes encode(const UIImage::Impl& picture) {
  const RowCoding coding = codingOf(picture);
  Bytes file(signature.begin(), signature.end());
  appendHeader(file, picture.shape, coding);
  if (picture.palette) appendPalette(file, *picture.palette);
  appendPixels(file, picture, coding);
  appendChunk(file, endChunk, {});
  file.shrink_to_fit();
  return file;
}

}  // namespace

DataRef UIImagePNGRepresentation(const UIImage& image) {
  const UIImage::Impl& picture = image.impl();
  std::lock_guard lock(picture.mutex);
  if (!picture.png) {
    picture.png = unlessOutOfMemory([&picture] { return NSData::dataWithBytes(encode(picture)); });
  }
  return picture.png;
}

}  // namespace platform
