#include "platform/linux/gif_file.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace platform::gif {
namespace {

// Block introducers and flags of the GIF89a format.
constexpr int extensionIntroducer = 0x21;
constexpr int imageSeparator = 0x2C;
constexpr int graphicControlLabel = 0xF9;
constexpr int colorTableFlag = 0x80;
constexpr int colorTableSizeMask = 0x07;
constexpr int interlaceFlag = 0x40;
constexpr int transparencyFlag = 0x01;
constexpr int disposalShift = 2;
constexpr int disposalMask = 0x07;

constexpr std::string_view signatures[] = {"GIF87a", "GIF89a"};

// Reads little-endian values in order; past the end everything is 0 and ended() true.
class Reader {
 public:
  explicit Reader(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

  bool ended() const { return ended_; }

  int byte() {
    if (bytes_.empty()) {
      ended_ = true;
      return 0;
    }
    const int value = bytes_.front();
    bytes_ = bytes_.subspan(1);
    return value;
  }

  int word() {
    const int low = byte();
    return low | byte() << 8;
  }

  std::span<const std::uint8_t> take(std::size_t count) {
    if (count > bytes_.size()) ended_ = true;
    const auto taken = bytes_.first(std::min(count, bytes_.size()));
    bytes_ = bytes_.subspan(taken.size());
    return taken;
  }

  // Everything up to and with the empty sub-block that ends a chain, or what there is of it.
  std::span<const std::uint8_t> subBlocks() {
    const auto start = bytes_;
    for (int size = byte(); size != 0; size = byte()) take(static_cast<std::size_t>(size));
    return start.first(start.size() - bytes_.size());
  }

 private:
  std::span<const std::uint8_t> bytes_;
  bool ended_ = false;
};

struct GraphicControl {
  std::optional<std::uint8_t> transparentIndex;
  Disposal disposal = Disposal::Keep;
  std::optional<int> delay;
};

using SharedTable = std::shared_ptr<const ColorTable>;

// nullptr where the flags say that there is none.
SharedTable readColorTable(Reader& reader, int flags) {
  if (!(flags & colorTableFlag)) return nullptr;
  ColorTable colors;
  const std::size_t count = std::size_t{2} << (flags & colorTableSizeMask);
  const auto bytes = reader.take(count * 3);
  for (std::size_t at = 0; at + 3 <= bytes.size(); at += 3) {
    colors.push_back({bytes[at], bytes[at + 1], bytes[at + 2]});
  }
  return std::make_shared<const ColorTable>(std::move(colors));
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

GraphicControl readGraphicControl(std::span<const std::uint8_t> subBlocks) {
  Reader reader(subBlocks);
  GraphicControl control;
  constexpr int fieldBytes = 4;
  if (reader.byte() < fieldBytes) return control;
  const int flags = reader.byte();
  control.disposal = disposalOf(flags);
  control.delay = reader.word();
  const auto index = static_cast<std::uint8_t>(reader.byte());
  if (flags & transparencyFlag) control.transparentIndex = index;
  return reader.ended() ? GraphicControl() : control;
}

Image readImage(Reader& reader, const GraphicControl& control, const SharedTable& global) {
  Image image;
  image.left = reader.word();
  image.top = reader.word();
  image.width = reader.word();
  image.height = reader.word();
  const int flags = reader.byte();
  image.interlaced = flags & interlaceFlag;
  image.colors = readColorTable(reader, flags);
  if (!image.colors) image.colors = global;
  image.transparentIndex = control.transparentIndex;
  image.disposal = control.disposal;
  image.delay = control.delay;
  image.minimumCodeSize = reader.byte();
  return image;
}

std::vector<Image> readImages(Reader& reader, const SharedTable& global) {
  std::vector<Image> images;
  GraphicControl control;
  for (int introducer = reader.byte(); !reader.ended() && images.size() < mostImages;
       introducer = reader.byte()) {
    if (introducer == extensionIntroducer) {
      const int label = reader.byte();
      const auto content = reader.subBlocks();
      if (label == graphicControlLabel) control = readGraphicControl(content);
    } else if (introducer == imageSeparator) {
      Image image = readImage(reader, control, global);
      if (reader.ended()) break;
      image.data = reader.subBlocks();
      images.push_back(std::move(image));
      control = {};
    } else {
      break;
    }
  }
  return images;
}

}  // namespace

std::optional<File> parse(std::span<const std::uint8_t> bytes) {
  Reader reader(bytes);
  const auto magic = reader.take(signatures[0].size());
  const bool known = std::any_of(std::begin(signatures), std::end(signatures), [&](auto signature) {
    return std::equal(signature.begin(), signature.end(), magic.begin(), magic.end());
  });
  if (!known) return std::nullopt;
  File file;
  file.width = reader.word();
  file.height = reader.word();
  const int flags = reader.byte();
  reader.take(2);  // background colour and pixel aspect, which viewers do not use
  SharedTable global = readColorTable(reader, flags);
  if (!global) global = std::make_shared<const ColorTable>();
  const std::int64_t pixels = std::int64_t{file.width} * file.height;
  if (reader.ended() || pixels == 0 || pixels > mostPixels) return std::nullopt;
  file.images = readImages(reader, global);
  return file;
}

}  // namespace platform::gif
