// Converts strips to the compressed rows of a PNG and back. Any thread. Functions throw
// std::bad_alloc.
#pragma once

#include "platform/linux/images/picture/picture.h"

namespace platform::backend::png {

// The values for a coding in a PNG header.
struct CodingInHeader {
  std::uint8_t bitDepth;
  std::uint8_t colorType;
};
CodingInHeader headerOf(RowCoding coding);

// Returns the number of bytes in a row, without the one before it. width is in pixels.
std::size_t codedRowLength(RowCoding coding, int width);

// None: rows are stored as they are, which is smaller for areas of a single color. Up: rows are
// stored as their differences from the rows above, which is smaller for gradients.
enum class RowFilter : std::uint8_t { None = 0, Up = 2 };

// Returns the strip's rows in this coding, which must lose nothing: indices below 2, 4 or
// 16, or opaque pixels for RGB.
std::shared_ptr<const CompressedRows> compressRows(const Strip& strip, RowCoding coding, int width,
                                                   RowFilter filter);

// Decompresses rows into a new strip for this index. Requires coding and deflated; sets the other
// fields. Returns nullptr if compressRows cannot have produced the rows.
std::shared_ptr<Strip> decompressRows(CompressedRows& rows, const PictureShape& shape, int index);

}  // namespace platform::backend::png
