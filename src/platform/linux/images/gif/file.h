// Reads the structure of a GIF: its logical screen, and where each image's data are. Does not
// decode images or allocate memory for their declared sizes.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "platform/linux/files/byte_reader.h"
#include "platform/linux/files/data.h"

namespace platform::backend::gif {

using Color = std::array<std::uint8_t, 3>;
using ColorTable = std::vector<Color>;

enum class Disposal : std::uint8_t { Keep, Clear, RestorePrevious };

// The position of a color table in the file. count is 0 if there is none.
struct ColorTableLocation {
  std::uint32_t offset = 0;
  std::uint16_t count = 0;
  friend bool operator==(const ColorTableLocation&, const ColorTableLocation&) = default;
};

struct SubImage {
  // In pixels on the logical screen, beyond which the rectangle may reach.
  std::uint16_t left = 0;
  std::uint16_t top = 0;
  std::uint16_t width = 0;
  std::uint16_t height = 0;
  // The image's own color table, or else the global one.
  ColorTableLocation colors;
  // The offset of the first data sub-block, which starts with its length.
  std::uint32_t dataOffset = 0;
  std::uint8_t minimumCodeSize = 0;
  bool interlaced = false;
  Disposal disposal = Disposal::Keep;
  std::optional<std::uint8_t> transparentIndex;
  // In hundredths of a second; nothing if there is no graphic control extension.
  std::optional<std::uint16_t> delay;
};

struct File {
  int width = 0;
  int height = 0;
  std::vector<SubImage> images;
  // True if the file ends with a trailer, after complete images and extensions.
  bool hasTrailer = false;
};

// Further images are not read. The delays of this many still fit into a property list.
constexpr std::size_t maxImages = std::size_t{1} << 19;

// Returns the structure of the file with its images up to the first damage; the data of the last
// one may be incomplete. Returns nothing if the file is not a GIF, or if its screen is empty or too
// large. Throws std::bad_alloc.
std::optional<File> parse(const NSData::Impl& data);

// Returns the colors of a table, or fewer if the file has been truncated.
ColorTable readColorTable(const NSData::Impl& data, ColorTableLocation location);

// Count how often this process has found damage in a GIF: a missing trailer, or an image of which
// not all rows could be decoded. Any thread.
void noteDamage();
int timesDamaged();

// Reads the contents of a chain of data sub-blocks as one stream. data must outlive this object.
class SubBlocks {
 public:
  SubBlocks(const NSData::Impl& data, std::size_t offset) : reader_(data, offset) {}

  // Fills room. Returns the number of bytes read, which is less than the size of room only at the
  // end of the chain or the file.
  std::size_t read(std::span<std::uint8_t> room);

 private:
  ByteReader reader_;
  std::size_t inBlock_ = 0;
  bool ended_ = false;
};

}  // namespace platform::backend::gif
