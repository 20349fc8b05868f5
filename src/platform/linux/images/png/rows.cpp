#include "platform/linux/images/png/rows.h"

#include <cstring>

#include "platform/linux/images/png/deflate.h"

namespace platform::backend::png {
namespace {

constexpr std::size_t rgb = 3;
constexpr std::size_t rgba = 4;

// The byte before each row in a PNG, which is the row's filter.
constexpr auto noFilter = static_cast<std::uint8_t>(RowFilter::None);
constexpr auto upFilter = static_cast<std::uint8_t>(RowFilter::Up);

int bitDepthOf(RowCoding coding) {
  return headerOf(coding).bitDepth;
}

// Packs several indices into each byte, the leftmost into the highest bits.
template <int bitDepth>
void packIndices(const std::uint8_t* indices, int width, std::uint8_t* packed) {
  constexpr int perByte = 8 / bitDepth;
  auto pack = [indices](int first, int count) {
    unsigned byte = 0;
    for (int each = 0; each < count; ++each) {
      byte |= unsigned{indices[first + each]} << (8 - bitDepth * (each + 1));
    }
    return static_cast<std::uint8_t>(byte);
  };
  const int whole = width / perByte;
  for (int byte = 0; byte < whole; ++byte) packed[byte] = pack(byte * perByte, perByte);
  if (width % perByte != 0) packed[whole] = pack(whole * perByte, width % perByte);
}

void unpackIndices(const std::uint8_t* packed, int width, int bitDepth, std::uint8_t* indices) {
  const unsigned mask = (1U << bitDepth) - 1;
  for (int x = 0, shift = 8 - bitDepth; x < width; ++x, shift -= bitDepth) {
    indices[x] = static_cast<std::uint8_t>(*packed >> shift & mask);
    if (shift == 0) {
      shift = 8;
      ++packed;
    }
  }
}

void dropAlpha(const std::uint8_t* source, int width, std::uint8_t* target) {
  for (int x = 0; x < width; ++x, source += rgba, target += rgb) std::memcpy(target, source, rgb);
}

void addAlpha(const std::uint8_t* source, int width, std::uint8_t* target) {
  for (int x = 0; x < width; ++x, source += rgb, target += rgba) {
    std::memcpy(target, source, rgb);
    target[rgb] = 255;
  }
}

void codeRow(const std::uint8_t* row, RowCoding coding, int width, std::uint8_t* target) {
  switch (coding) {
    case RowCoding::Indexed1:
      return packIndices<1>(row, width, target);
    case RowCoding::Indexed2:
      return packIndices<2>(row, width, target);
    case RowCoding::Indexed4:
      return packIndices<4>(row, width, target);
    case RowCoding::RGB:
      return dropAlpha(row, width, target);
    case RowCoding::Indexed8:
    case RowCoding::RGBA:
      std::memcpy(target, row, codedRowLength(coding, width));
  }
}

// The first row stays as it is, because there is none above it.
void filterUp(Bytes& coded, std::size_t stride) {
  for (std::size_t at = coded.size() - stride; at > 0; at -= stride) {
    std::uint8_t* row = &coded[at];
    const std::uint8_t* above = row - stride;
    for (std::size_t x = 1; x < stride; ++x) row[x] = static_cast<std::uint8_t>(row[x] - above[x]);
    row[0] = upFilter;
  }
}

// Undoes the filters. Returns false if there is one that compressRows does not use.
bool unfilter(std::span<std::uint8_t> coded, std::size_t stride) {
  if (coded[0] != noFilter) return false;
  for (std::size_t at = stride; at < coded.size(); at += stride) {
    std::uint8_t* row = &coded[at];
    const std::uint8_t* above = row - stride;
    if (row[0] == noFilter) continue;
    if (row[0] != upFilter) return false;
    for (std::size_t x = 1; x < stride; ++x) row[x] = static_cast<std::uint8_t>(row[x] + above[x]);
    row[0] = noFilter;
  }
  return true;
}

bool isStoredAsCoded(RowCoding coding) {
  return coding == RowCoding::Indexed8;
}

Bytes codedRows(const Strip& strip, RowCoding coding, int width, RowFilter filter) {
  const std::size_t stride = codedRowLength(coding, width) + 1;
  Bytes coded(stride * static_cast<std::size_t>(strip.rowCount()));
  for (int row = 0; row < strip.rowCount(); ++row) {
    codeRow(strip.row(row), coding, width, &coded[static_cast<std::size_t>(row) * stride + 1]);
  }
  if (filter == RowFilter::Up) filterUp(coded, stride);
  return coded;
}

void decodeRow(const std::uint8_t* coded, RowCoding coding, int width, std::uint8_t* row) {
  if (coding == RowCoding::RGB) {
    addAlpha(coded, width, row);
  } else if (coding == RowCoding::RGBA) {
    std::memcpy(row, coded, codedRowLength(coding, width));
  } else {
    unpackIndices(coded, width, bitDepthOf(coding), row);
  }
}

}  // namespace

CodingInHeader headerOf(RowCoding coding) {
  // PNG's color types.
  constexpr std::uint8_t truecolor = 2;
  constexpr std::uint8_t palette = 3;
  constexpr std::uint8_t truecolorWithAlpha = 6;
  switch (coding) {
    case RowCoding::Indexed1:
      return {1, palette};
    case RowCoding::Indexed2:
      return {2, palette};
    case RowCoding::Indexed4:
      return {4, palette};
    case RowCoding::Indexed8:
      return {8, palette};
    case RowCoding::RGB:
      return {8, truecolor};
    case RowCoding::RGBA:
      return {8, truecolorWithAlpha};
  }
  return {};
}

std::size_t codedRowLength(RowCoding coding, int width) {
  const auto pixels = static_cast<std::size_t>(width);
  if (coding == RowCoding::RGB) return pixels * rgb;
  if (coding == RowCoding::RGBA) return pixels * rgba;
  return (pixels * static_cast<std::size_t>(bitDepthOf(coding)) + 7) / 8;
}

std::shared_ptr<const CompressedRows> compressRows(const Strip& strip, RowCoding coding, int width,
                                                   RowFilter filter) {
  Bytes coded;
  std::span<const std::uint8_t> bytes = strip.bytes();
  if (!isStoredAsCoded(coding) || filter != RowFilter::None) {
    bytes = coded = codedRows(strip, coding, width, filter);
  }
  return std::make_shared<const CompressedRows>(
      CompressedRows{coding, deflatePiece(bytes), adler32Of(bytes), bytes.size()});
}

std::shared_ptr<Strip> decompressRows(CompressedRows& rows, const PictureShape& shape, int index) {
  auto strip = shape.makeStrip(index);
  const std::size_t stride = codedRowLength(rows.coding, shape.width) + 1;
  Bytes coded;
  std::span<std::uint8_t> bytes = strip->bytes();
  if (!isStoredAsCoded(rows.coding)) {
    coded.resize(stride * static_cast<std::size_t>(strip->rowCount()));
    bytes = coded;
  }
  if (!inflatePiece(rows.deflated, bytes)) return nullptr;
  rows.adler = adler32Of(bytes);
  rows.length = bytes.size();
  if (!unfilter(bytes, stride)) return nullptr;
  for (int row = 0; !coded.empty() && row < strip->rowCount(); ++row) {
    decodeRow(&coded[static_cast<std::size_t>(row) * stride + 1], rows.coding, shape.width,
              strip->row(row));
  }
  return strip;
}

}  // namespace platform::backend::png
