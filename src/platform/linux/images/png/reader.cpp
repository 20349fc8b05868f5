#include "platform/linux/images/png/reader.h"

#include <algorithm>
#include <atomic>
#include <deque>
#include <mutex>
#include <optional>
#include <span>
#include <utility>

#include <png.h>
#include <zlib.h>

#include "platform/linux/files/byte_reader.h"
#include "platform/linux/helper_thread.h"
#include "platform/linux/images/png/deflate.h"
#include "platform/linux/images/png/format.h"
#include "platform/linux/images/png/rows.h"
#include "platform/linux/out_of_memory.h"

namespace platform::backend::png {
namespace {

std::uint32_t numberAt(std::span<const std::uint8_t> bytes, std::size_t at) {
  return std::uint32_t{bytes[at]} << 24 | std::uint32_t{bytes[at + 1]} << 16 |
         std::uint32_t{bytes[at + 2]} << 8 | bytes[at + 3];
}

// Reads the chunks of a file in order, up to the first damage.
class Chunks {
 public:
  explicit Chunks(std::span<const std::uint8_t> file) : rest_(file) {
    const bool isPng = rest_.size() >= signature.size() &&
                       std::equal(signature.begin(), signature.end(), rest_.begin());
    rest_ = isPng ? rest_.subspan(signature.size()) : rest_.first(0);
  }

  // Returns the content of the next chunk, and moves on to the one after it, if it has this name.
  std::optional<std::span<const std::uint8_t>> take(const ChunkName& name) {
    constexpr std::size_t fields = 12;
    if (rest_.size() < fields) return std::nullopt;
    const std::size_t length = numberAt(rest_, 0);
    if (length > rest_.size() - fields) return std::nullopt;
    const auto named = rest_.subspan(4, name.size() + length);
    if (!std::equal(name.begin(), name.end(), named.begin())) return std::nullopt;
    if (crc32Of(named) != numberAt(rest_, 8 + length)) return std::nullopt;
    rest_ = rest_.subspan(fields + length);
    return named.subspan(name.size());
  }

 private:
  std::span<const std::uint8_t> rest_;
};

std::optional<RowCoding> codingInHeader(std::span<const std::uint8_t> header) {
  constexpr RowCoding all[] = {RowCoding::Indexed1, RowCoding::Indexed2, RowCoding::Indexed4,
                               RowCoding::Indexed8, RowCoding::RGB,      RowCoding::RGBA};
  for (const RowCoding coding : all) {
    const CodingInHeader expected = headerOf(coding);
    if (header[8] == expected.bitDepth && header[9] == expected.colorType) return coding;
  }
  return std::nullopt;
}

// The images that were decoded recently, whose strips the next one may share.
class RecentPictures {
 public:
  static RecentPictures& all() {
    static auto* pictures = new RecentPictures;
    return *pictures;
  }

  void add(const ImageRef& image) {
    constexpr std::size_t maxCount = 4;
    std::lock_guard lock(mutex_);
    recent_.emplace_front(image);
    if (recent_.size() > maxCount) recent_.pop_back();
  }

  // Returns an image in use whose strips have the same meaning, or nullptr if there is none.
  ImageRef similar(const PictureShape& shape, const std::optional<Palette>& palette) const {
    std::lock_guard lock(mutex_);
    for (const auto& entry : recent_) {
      ImageRef image = entry.lock();
      if (!image || !(image->impl().shape == shape)) continue;
      if (!palette || *image->impl().palette == *palette) return image;
    }
    return nullptr;
  }

 private:
  mutable std::mutex mutex_;
  std::deque<std::weak_ptr<const UIImage>> recent_;
};

// Reads a file with the writer's structure, and rejects all others.
class OwnPng {
 public:
  explicit OwnPng(std::span<const std::uint8_t> file) : chunks_(file) {}

  ImageRef read() {
    if (!readHeader() || (isIndexed() && !readPalette())) return nullptr;
    before_ = RecentPictures::all().similar(shape_, palette_);
    if (!readPixels() || !chunks_.take(endChunk)) return nullptr;
    std::shared_ptr<const Palette> palette;
    if (palette_) {
      palette = before_ ? before_->impl().palette : std::make_shared<const Palette>(*palette_);
    }
    auto image = makeImage(shape_, std::move(palette), std::move(strips_));
    RecentPictures::all().add(image);
    return image;
  }

 private:
  bool isIndexed() const { return shape_.format == PixelFormat::Indexed; }

  bool readHeader() {
    constexpr std::size_t headerSize = 13;
    const auto header = chunks_.take(headerChunk);
    if (!header || header->size() != headerSize) return false;
    const std::uint32_t width = numberAt(*header, 0);
    const std::uint32_t height = numberAt(*header, 4);
    if (!isOfUsableSize(width, height)) return false;
    const auto coding = codingInHeader(*header);
    const bool hasOnlyMethodsZero = (*header)[10] == 0 && (*header)[11] == 0 && (*header)[12] == 0;
    if (!coding || !hasOnlyMethodsZero) return false;
    coding_ = *coding;
    const bool isTruecolor = coding_ == RowCoding::RGB || coding_ == RowCoding::RGBA;
    shape_ = {static_cast<int>(width), static_cast<int>(height),
              isTruecolor ? PixelFormat::RGBA : PixelFormat::Indexed};
    return true;
  }

  bool readPalette() {
    const auto colors = chunks_.take(paletteChunk);
    if (!colors) return false;
    const auto alphas = chunks_.take(alphaChunk);
    Palette palette;
    palette.count = colors->size() / 3;
    const bool isRight = palette.count > 0 && palette.count <= maxColors &&
                         (!alphas || alphas->size() <= palette.count);
    if (!isRight) return false;
    for (std::size_t index = 0; index < palette.count; ++index) {
      const std::uint8_t alpha = alphas && index < alphas->size() ? (*alphas)[index] : 255;
      RGBAColor& color = palette.colors[index];
      if (alpha == 0) continue;
      std::copy_n(colors->begin() + static_cast<std::ptrdiff_t>(index * 3), 3, color.begin());
      color[3] = alpha;
    }
    palette_ = palette;
    return true;
  }

  bool readPixels() {
    const auto header = chunks_.take(dataChunk);
    if (!header || !std::ranges::equal(*header, zlibHeader)) return false;
    if (!findStrips() || !readMissingStrips()) return false;
    uLong adler = 1;
    for (const auto& strip : strips_) {
      const auto rows = strip->compressed();
      adler = adler32_combine(adler, rows->adler, static_cast<z_off_t>(rows->length));
    }
    const auto end = chunks_.take(dataChunk);
    constexpr std::size_t finalBlockSize = emptyFinalBlock.size();
    return end && end->size() == finalBlockSize + sizeof(std::uint32_t) &&
           std::ranges::equal(end->first(finalBlockSize), emptyFinalBlock) &&
           numberAt(*end, finalBlockSize) == adler;
  }

  // Takes strips from the picture before, and notes the others.
  bool findStrips() {
    for (int index = 0; index < shape_.stripCount(); ++index) {
      const auto deflated = chunks_.take(dataChunk);
      if (!deflated) return false;
      strips_.push_back(sharedStrip(index, *deflated));
      if (!strips_.back()) missing_.push_back({index, *deflated});
    }
    return true;
  }

  std::shared_ptr<const Strip> sharedStrip(int index,
                                           std::span<const std::uint8_t> deflated) const {
    if (!before_) return nullptr;
    const auto& strip = before_->impl().strips[static_cast<std::size_t>(index)];
    const auto rows = strip->compressed();
    const bool isSame =
        rows && rows->coding == coding_ && std::ranges::equal(rows->deflated, deflated);
    return isSame ? strip : nullptr;
  }

  bool readMissingStrips() {
    // Reading fewer takes less time than waking a thread.
    constexpr std::size_t minForHelper = 4;
    std::atomic<bool> areValid = true;
    inParallel(missing_.size(), minForHelper, [&](std::size_t at) {
      const auto& [index, deflated] = missing_[at];
      auto& strip = strips_[static_cast<std::size_t>(index)];
      strip = readStrip(index, deflated);
      if (!strip) areValid = false;
    });
    return areValid;
  }

  std::shared_ptr<const Strip> readStrip(int index, std::span<const std::uint8_t> deflated) const {
    CompressedRows rows;
    rows.coding = coding_;
    rows.deflated.assign(deflated.begin(), deflated.end());
    auto strip = decompressRows(rows, shape_, index);
    if (!strip || (palette_ && !hasOnlyItsColors(*strip))) return nullptr;
    strip->setCompressed(std::make_shared<const CompressedRows>(std::move(rows)));
    return strip;
  }

  // Returns true if the palette has a color for every index. The bytes before the rows are 0.
  bool hasOnlyItsColors(const Strip& strip) const {
    if (palette_->count == maxColors) return true;
    std::uint8_t largest = 0;
    for (const std::uint8_t index : strip.bytes()) largest = std::max(largest, index);
    return largest < palette_->count;
  }

  Chunks chunks_;
  RowCoding coding_ = RowCoding::Indexed8;
  PictureShape shape_;
  std::optional<Palette> palette_;
  ImageRef before_;
  Strips strips_;
  // The strips that the picture before does not have.
  struct Missing {
    int index;
    std::span<const std::uint8_t> deflated;
  };
  std::vector<Missing> missing_;
};

ImageRef readAnyPng(const Bytes& file) {
  png_image header{};
  header.version = PNG_IMAGE_VERSION;
  if (!png_image_begin_read_from_memory(&header, file.data(), file.size())) return nullptr;
  header.format = PNG_FORMAT_RGBA;
  Bytes pixels;
  if (isOfUsableSize(header.width, header.height))
    pixels = unlessOutOfMemory([&header] { return Bytes(PNG_IMAGE_SIZE(header)); });
  if (pixels.empty()) {
    png_image_free(&header);
    return nullptr;
  }
  if (!png_image_finish_read(&header, nullptr, pixels.data(), 0, nullptr)) return nullptr;
  return imageFromPixels(static_cast<int>(header.width), static_cast<int>(header.height), pixels);
}

}  // namespace

ImageRef decodePng(const NSData& data) {
  return unlessOutOfMemory([&data]() -> ImageRef {
    // A larger file has more pixels than can be decoded.
    constexpr std::size_t maxSize = static_cast<std::size_t>(maxPixels) * 5;
    if (data.length() > maxSize) return nullptr;
    Bytes file(data.length());
    file.resize(ByteReader(data.impl()).read(file));
    if (auto image = OwnPng(file).read()) return image;
    return readAnyPng(file);
  });
}

}  // namespace platform::backend::png
