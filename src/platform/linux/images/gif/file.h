// The structure of a GIF: its logical screen and where each image's data lie. Nothing is decoded
// here, and nothing of the declared sizes is allocated.
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

// Where a color table lies in the file; none has no colors.
struct ColorTableLocation {
  std::uint32_t offset = 0;
  std::uint16_t count = 0;
  friend bool operator==(const ColorTableLocation&, const ColorTableLocation&) = default;
};

struct SubImage {
  // Pixels on the logical screen; the rectangle may reach past it.
  std::uint16_t left = 0;
  std::uint16_t top = 0;
  std::uint16_t width = 0;
  std::uint16_t height = 0;
  // The table in force.
  ColorTableLocation colors;
  // Of the first data sub-block's length byte.
  std::uint32_t dataOffset = 0;
  std::uint8_t minimumCodeSize = 0;
  bool interlaced = false;
  Disposal disposal = Disposal::Keep;
  std::optional<std::uint8_t> transparentIndex;
  // Hundredths of a second, as stored; nothing without a graphic control extension.
  std::optional<std::uint16_t> delay;
};

struct File {
  int width = 0;
  int height = 0;
  std::vector<SubImage> images;
  // Whether the trailer was found where an image or an extension could have been.
  bool hasTrailer = false;
};

// More images than these are not read; the delays of so many still fit into a property list.
constexpr std::size_t maxImages = std::size_t{1} << 19;

// The images up to the first damage in the structure. Nothing if this is no GIF, or if its screen
// is empty or too large to hold.
std::optional<File> parse(const NSData::Impl& data);

ColorTable readColorTable(const NSData::Impl& data, ColorTableLocation location);

// How often this process has met damage in a GIF: a file without its end, or an image not all of
// whose rows could be decoded. Any thread.
void noteDamage();
int timesDamaged();

// The contents of a chain of data sub-blocks, as one stream.
class SubBlocks {
 public:
  SubBlocks(const NSData::Impl& data, std::size_t offset) : reader_(data, offset) {}

  // How much was there, up to the room's size; less only at the end of the chain or the file.
  std::size_t read(std::span<std::uint8_t> room);

 private:
  ByteReader reader_;
  std::size_t inBlock_ = 0;
  bool ended_ = false;
};

}  // namespace platform::backend::gif
