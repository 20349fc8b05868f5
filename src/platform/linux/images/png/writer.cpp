#include <algorithm>
#include <array>
#include <span>
#include <utility>
#include <vector>

#include <zlib.h>

#include "platform/image.h"
#include "platform/linux/files/data.h"
#include "platform/linux/helper_thread.h"
#include "platform/linux/images/picture/pixels.h"
#include "platform/linux/images/png/deflate.h"
#include "platform/linux/images/png/format.h"
#include "platform/linux/images/png/rows.h"
#include "platform/linux/out_of_memory.h"

namespace platform {
using namespace backend;

namespace {

using namespace png;

std::array<std::uint8_t, 4> bigEndian(std::size_t value) {
  return {static_cast<std::uint8_t>(value >> 24), static_cast<std::uint8_t>(value >> 16),
          static_cast<std::uint8_t>(value >> 8), static_cast<std::uint8_t>(value)};
}

void append(Bytes& target, std::span<const std::uint8_t> bytes) {
  target.insert(target.end(), bytes.begin(), bytes.end());
}

// Assembles a PNG file. Refers to compressed rows instead of copying them.
class PngFile {
 public:
  PngFile() { append(pending_, signature); }

  void appendChunk(const ChunkName& name, std::span<const std::uint8_t> content) {
    begin(name, content.size());
    append(pending_, content);
    end(name, content);
  }

  void appendChunk(const ChunkName& name, const std::shared_ptr<const CompressedRows>& rows) {
    begin(name, rows->deflated.size());
    flushPending();
    pieces_.push_back({rows, rows->deflated});
    end(name, rows->deflated);
  }

  DataRef data() {
    flushPending();
    return dataOfPieces(std::move(pieces_));
  }

 private:
  void begin(const ChunkName& name, std::size_t size) {
    append(pending_, bigEndian(size));
    append(pending_, name);
  }

  void end(const ChunkName& name, std::span<const std::uint8_t> content) {
    append(pending_, bigEndian(continueCrc32(crc32Of(name), content)));
  }

  void flushPending() {
    auto owner = std::make_shared<const Bytes>(std::exchange(pending_, {}));
    pieces_.push_back({owner, *owner});
  }

  std::vector<Piece> pieces_;
  // The bytes after the last piece.
  Bytes pending_;
};

bool hasOpaquePixels(const UIImage::Impl& picture) {
  const auto width = static_cast<std::size_t>(picture.shape.width);
  return std::ranges::all_of(picture.strips, [width](const auto& strip) {
    for (int row = 0; row < strip->rowCount(); ++row) {
      if (!isOpaque(strip->row(row), width)) return false;
    }
    return true;
  });
}

RowCoding codingOf(const UIImage::Impl& picture) {
  if (picture.shape.format == PixelFormat::RGBA) {
    return hasOpaquePixels(picture) ? RowCoding::RGB : RowCoding::RGBA;
  }
  if (picture.palette->count <= 2) return RowCoding::Indexed1;
  if (picture.palette->count <= 4) return RowCoding::Indexed2;
  if (picture.palette->count <= 16) return RowCoding::Indexed4;
  return RowCoding::Indexed8;
}

void appendHeader(PngFile& file, const PictureShape& shape, RowCoding coding) {
  Bytes header;
  append(header, bigEndian(static_cast<std::size_t>(shape.width)));
  append(header, bigEndian(static_cast<std::size_t>(shape.height)));
  const CodingInHeader inHeader = headerOf(coding);
  // Compression, filter and interlace methods are 0.
  append(header, std::array<std::uint8_t, 5>{inHeader.bitDepth, inHeader.colorType, 0, 0, 0});
  file.appendChunk(headerChunk, header);
}

void appendPalette(PngFile& file, const Palette& palette) {
  Bytes colors;
  Bytes alphas;
  std::size_t lastTranslucent = 0;
  for (std::size_t index = 0; index < palette.count; ++index) {
    const RGBAColor& color = palette.colors[index];
    append(colors, std::span(color).first(3));
    alphas.push_back(color[3]);
    if (color[3] != 255) lastTranslucent = index + 1;
  }
  // Colors without an alpha are opaque.
  alphas.resize(lastTranslucent);
  file.appendChunk(paletteChunk, colors);
  if (!alphas.empty()) file.appendChunk(alphaChunk, alphas);
}

using Rows = std::shared_ptr<const CompressedRows>;

struct FilteredRows {
  RowFilter filter;
  Rows rows;
};

// Compresses a strip with the filter that makes it smaller. Differences between palette indices are
// meaningless.
FilteredRows compressedBest(const Strip& strip, RowCoding coding, int width) {
  FilteredRows plain{RowFilter::None, compressRows(strip, coding, width, RowFilter::None)};
  if (coding != RowCoding::RGB && coding != RowCoding::RGBA) return plain;
  FilteredRows differences{RowFilter::Up, compressRows(strip, coding, width, RowFilter::Up)};
  return differences.rows->deflated.size() < plain.rows->deflated.size() ? differences : plain;
}

// Returns all strips in compressed form. Compresses those that have not been, on several
// threads if there are many.
std::vector<Rows> compressedStrips(const UIImage::Impl& picture, RowCoding coding) {
  std::vector<Rows> all;
  std::vector<std::size_t> missing;
  for (const auto& strip : picture.strips) {
    Rows rows = strip->compressed();
    if (!rows || rows->coding != coding) missing.push_back(all.size());
    all.push_back(std::move(rows));
  }
  if (missing.empty()) return all;
  const int width = picture.shape.width;
  auto store = [&](std::size_t index, Rows rows) {
    picture.strips[index]->setCompressed(rows);
    all[index] = std::move(rows);
  };
  const FilteredRows first = compressedBest(*picture.strips[missing.front()], coding, width);
  store(missing.front(), first.rows);
  // Compressing fewer takes less time than waking a thread.
  constexpr std::size_t minForHelper = 2;
  inParallel(missing.size() - 1, minForHelper, [&](std::size_t at) {
    const std::size_t index = missing[at + 1];
    store(index, compressRows(*picture.strips[index], coding, width, first.filter));
  });
  return all;
}

void appendPixels(PngFile& file, const UIImage::Impl& picture, RowCoding coding) {
  file.appendChunk(dataChunk, zlibHeader);
  uLong adler = 1;
  for (const Rows& rows : compressedStrips(picture, coding)) {
    file.appendChunk(dataChunk, rows);
    adler = adler32_combine(adler, rows->adler, static_cast<z_off_t>(rows->length));
  }
  Bytes end(emptyFinalBlock.begin(), emptyFinalBlock.end());
  append(end, bigEndian(adler));
  file.appendChunk(dataChunk, end);
}

DataRef encode(const UIImage::Impl& picture) {
  const RowCoding coding = codingOf(picture);
  PngFile file;
  appendHeader(file, picture.shape, coding);
  if (picture.palette) appendPalette(file, *picture.palette);
  appendPixels(file, picture, coding);
  file.appendChunk(endChunk, std::span<const std::uint8_t>());
  return file.data();
}

}  // namespace

DataRef UIImagePNGRepresentation(const UIImage& image) {
  const UIImage::Impl& picture = pictureOf(image);
  std::lock_guard lock(picture.mutex);
  if (!picture.png) {
    picture.png = unlessOutOfMemory([&picture] { return encode(picture); });
  }
  return picture.png;
}

}  // namespace platform
