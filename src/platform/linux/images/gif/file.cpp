#include "platform/linux/images/gif/file.h"

#include <algorithm>
#include <atomic>
#include <string_view>
#include <tuple>

#include "platform/linux/images/picture/picture.h"

namespace platform::backend::gif {
namespace {

// Block introducers and flags of the GIF89a format.
constexpr int extensionIntroducer = 0x21;
constexpr int imageSeparator = 0x2C;
constexpr int trailer = 0x3B;
constexpr int graphicControlLabel = 0xF9;
constexpr int colorTableFlag = 0x80;
constexpr int colorTableSizeMask = 0x07;
constexpr int interlaceFlag = 0x40;
constexpr int transparencyFlag = 0x01;
constexpr int disposalShift = 2;
constexpr int disposalMask = 0x07;

constexpr std::string_view signatures[] = {"GIF87a", "GIF89a"};

struct GraphicControl {
  std::optional<std::uint8_t> transparentIndex;
  Disposal disposal = Disposal::Keep;
  std::optional<std::uint16_t> delay;
};

std::atomic<int> damages = 0;

constexpr std::size_t bytesPerColor = std::tuple_size_v<Color>;

// Skips the color table, if the flags announce one, and returns its location.
ColorTableLocation locateColorTable(ByteReader& reader, int flags) {
  if (!(flags & colorTableFlag)) return {};
  ColorTableLocation location;
  location.offset = static_cast<std::uint32_t>(reader.offset());
  location.count = static_cast<std::uint16_t>(2 << (flags & colorTableSizeMask));
  reader.skip(location.count * bytesPerColor);
  return location;
}

// Skips a chain of sub-blocks with the empty one that ends it, or up to the end of the file.
void skipSubBlocks(ByteReader& reader) {
  for (int size = reader.byte(); size != 0; size = reader.byte()) {
    reader.skip(static_cast<std::size_t>(size));
  }
}

Disposal disposalOf(int flags) {
  switch (flags >> disposalShift & disposalMask) {
    case 2:
      return Disposal::Clear;
    case 3:
      return Disposal::RestorePrevious;
    default:
      return Disposal::Keep;
  }
}

GraphicControl readGraphicControl(ByteReader& reader) {
  GraphicControl control;
  constexpr int fieldBytes = 4;
  const int size = reader.byte();
  if (size >= fieldBytes) {
    const int flags = reader.byte();
    control.disposal = disposalOf(flags);
    control.delay = static_cast<std::uint16_t>(reader.word());
    const auto index = static_cast<std::uint8_t>(reader.byte());
    if (flags & transparencyFlag) control.transparentIndex = index;
    reader.skip(static_cast<std::size_t>(size - fieldBytes));
  } else {
    reader.skip(static_cast<std::size_t>(size));
  }
  if (size != 0) skipSubBlocks(reader);
  return control;
}

std::uint16_t readWord(ByteReader& reader) {
  return static_cast<std::uint16_t>(reader.word());
}

SubImage readImage(ByteReader& reader, const GraphicControl& control, ColorTableLocation global) {
  SubImage image;
  image.left = readWord(reader);
  image.top = readWord(reader);
  image.width = readWord(reader);
  image.height = readWord(reader);
  const int flags = reader.byte();
  image.interlaced = flags & interlaceFlag;
  image.colors = locateColorTable(reader, flags);
  if (image.colors.count == 0) image.colors = global;
  image.transparentIndex = control.transparentIndex;
  image.disposal = control.disposal;
  image.delay = control.delay;
  image.minimumCodeSize = static_cast<std::uint8_t>(reader.byte());
  image.dataOffset = static_cast<std::uint32_t>(reader.offset());
  return image;
}

void readImages(ByteReader& reader, ColorTableLocation global, File& file) {
  GraphicControl control;
  for (int introducer = reader.byte(); !reader.ended() && file.images.size() < maxImages;
       introducer = reader.byte()) {
    if (introducer == extensionIntroducer) {
      if (reader.byte() == graphicControlLabel) {
        control = readGraphicControl(reader);
      } else {
        skipSubBlocks(reader);
      }
    } else if (introducer == imageSeparator) {
      const SubImage image = readImage(reader, control, global);
      if (reader.ended()) break;
      skipSubBlocks(reader);
      file.images.push_back(image);
      control = {};
    } else {
      file.hasTrailer = introducer == trailer;
      break;
    }
  }
}

}  // namespace

std::optional<File> parse(const NSData::Impl& data) {
  ByteReader reader(data);
  std::array<char, signatures[0].size()> magic;
  for (char& character : magic) character = static_cast<char>(reader.byte());
  const std::string_view signature(magic.data(), magic.size());
  if (std::ranges::find(signatures, signature) == std::end(signatures)) return std::nullopt;
  File file;
  file.width = reader.word();
  file.height = reader.word();
  const int flags = reader.byte();
  reader.skip(2);  // background color and pixel aspect, which viewers do not use
  const ColorTableLocation global = locateColorTable(reader, flags);
  if (reader.ended() || reader.offset() > data.length()) return std::nullopt;
  if (!isOfUsableSize(file.width, file.height)) return std::nullopt;
  readImages(reader, global, file);
  if (!file.hasTrailer) noteDamage();
  return file;
}

void noteDamage() {
  ++damages;
}

int timesDamaged() {
  return damages;
}

ColorTable readColorTable(const NSData::Impl& data, ColorTableLocation location) {
  std::array<std::uint8_t, maxColors * bytesPerColor> window;
  const auto bytes =
      data.view(location.offset, std::span(window).first(location.count * bytesPerColor));
  ColorTable colors;
  for (std::size_t at = 0; at + bytesPerColor <= bytes.size(); at += bytesPerColor) {
    colors.push_back({bytes[at], bytes[at + 1], bytes[at + 2]});
  }
  return colors;
}

std::size_t SubBlocks::read(std::span<std::uint8_t> room) {
  std::size_t done = 0;
  while (done < room.size() && !ended_) {
    if (inBlock_ == 0) inBlock_ = static_cast<std::size_t>(reader_.byte());
    const std::size_t wanted = std::min(inBlock_, room.size() - done);
    const std::size_t count = reader_.read(room.subspan(done, wanted));
    done += count;
    inBlock_ -= count;
    ended_ = wanted == 0 || count < wanted;
  }
  return done;
}

}  // namespace platform::backend::gif
