// The rows of a strip as a PNG has them, before compression: filtered, and packed where several
// indices share a byte.
#pragma once

#include "platform/linux/images/picture/picture.h"

namespace platform::backend::png {

// What the PNG header says of a coding.
struct CodingInHeader {
  std::uint8_t bitDepth;
  std::uint8_t colorType;
};
CodingInHeader headerOf(RowCoding coding);

// The bytes of a row, without the one that names its filter.
std::size_t codedRowLength(RowCoding coding, int width);

// Rows as they are, or as their differences from the rows above: which is smaller depends on
// whether colors change in steps or slowly.
enum class RowFilter : std::uint8_t { None = 0, Up = 2 };

// The strip's rows in this coding, which must suit its format.
std::shared_ptr<const CompressedRows> compressRows(const Strip& strip, RowCoding coding, int width,
                                                   RowFilter filter);

// A strip of these rows, whose coding and deflated bytes are given; the rest is filled in. nullptr
// if they are not as this writer makes them.
std::shared_ptr<Strip> decompressRows(CompressedRows& rows, const PictureShape& shape, int index);

}  // namespace platform::backend::png
