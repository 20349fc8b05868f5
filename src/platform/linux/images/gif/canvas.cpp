#include "platform/linux/images/gif/canvas.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <functional>
#include <utility>

#include "platform/linux/images/gif/few_colors.h"
#include "platform/linux/images/gif/index_blitter.h"

namespace platform::backend::gif {
namespace {

struct Visible {
  std::size_t width;
  int bottom;
};

// Returns the part of an image's rectangle that is on the canvas.
Visible visiblePart(const PictureShape& shape, const SubImage& image) {
  return {
      static_cast<std::size_t>(std::max(0, std::min<int>(image.width, shape.width - image.left))),
      std::min(image.top + image.height, shape.height)};
}

// Calls draw(y, indices) for every row that is on the canvas, in the order of the file, until the
// indices end.
template <typename Draw>
void forEachRow(const PictureShape& shape, const SubImage& image,
                std::span<const std::uint8_t> indices, Draw draw) {
  struct Pass {
    int first;
    int step;
  };
  constexpr Pass plain[] = {{0, 1}};
  constexpr Pass interlaced[] = {{0, 8}, {4, 8}, {2, 4}, {1, 2}};
  const std::span<const Pass> passes =
      image.interlaced ? std::span<const Pass>(interlaced) : std::span<const Pass>(plain);
  const Visible visible = visiblePart(shape, image);
  for (const Pass& pass : passes) {
    for (int y = pass.first; y < image.height; y += pass.step) {
      if (indices.size() < image.width) return;
      if (image.top + y < visible.bottom && visible.width > 0) draw(image.top + y, indices.data());
      indices = indices.subspan(image.width);
    }
  }
}

bool contains(std::span<const std::uint8_t> indices, std::uint8_t index) {
  return std::memchr(indices.data(), index, indices.size()) != nullptr;
}

}  // namespace

Canvas::Canvas(int width, int height) : shape_{width, height, PixelFormat::Indexed} {
  makeBlank();
}

// All blank strips are one, except for the last, which may have fewer rows.
void Canvas::makeBlank() {
  shape_.format = PixelFormat::Indexed;
  palette_ = {};
  palette_.colors[0] = transparent;
  palette_.count = 1;
  isBlank_ = true;
  const auto count = static_cast<std::size_t>(shape_.stripCount());
  auto blankStrip = [this](int index) {
    auto strip = shape_.makeStrip(index);
    std::ranges::fill(strip->bytes(), std::uint8_t{0});
    return strip;
  };
  strips_.assign(count, blankStrip(0));
  strips_.back() = blankStrip(shape_.stripCount() - 1);
  own_.assign(count, nullptr);
}

bool Canvas::covers(const SubImage& image) const {
  return image.left == 0 && image.top == 0 && image.width >= shape_.width &&
         image.height >= shape_.height;
}

bool Canvas::isReplacedBy(const SubImage& image, std::span<const std::uint8_t> indices) const {
  return covers(image) && indices.size() == std::size_t{image.width} * image.height;
}

void Canvas::draw(const SubImage& image, const ColorTable& colors,
                  std::span<const std::uint8_t> indices) {
  if (isReplacedBy(image, indices) && takeOverPalette(image, colors, indices)) {
    IndexSet all;
    all.fill(true);
    drawIndices(image, sameIndices(all), indices);
  } else if (auto mapping = mappingFor(image, colors, indices)) {
    if (!keepsIndices(*mapping)) improve(*mapping, image, colors, indices);
    drawIndices(image, *mapping, indices);
  } else {
    becomeRGBA();
    drawColors(image, colors, indices);
  }
  isBlank_ = false;
}

// Replaces the palette by the image's and returns true, unless part of the old contents stays
// visible.
bool Canvas::takeOverPalette(const SubImage& image, const ColorTable& colors,
                             std::span<const std::uint8_t> indices) {
  const std::size_t possible = std::size_t{1} << image.minimumCodeSize;
  std::size_t count = colors.size();
  if (image.transparentIndex && contains(indices, *image.transparentIndex)) {
    if (!isBlank_) return false;
    count = std::max<std::size_t>(count, *image.transparentIndex + 1U);
  }
  if (possible > colors.size()) {
    const std::size_t used = std::size_t{*std::ranges::max_element(indices)} + 1;
    if (used > colors.size() && !isBlank_) return false;
    count = std::max(count, used);
  }
  shape_.format = PixelFormat::Indexed;
  for (std::size_t index = 0; index < strips_.size(); ++index) {
    strips_[index] = own_[index] = shape_.makeStrip(static_cast<int>(index));
  }
  palette_ = {};
  palette_.count = count;
  std::ranges::transform(colors, palette_.colors.begin(), opaque);
  if (image.transparentIndex) palette_.colors[*image.transparentIndex] = transparent;
  return true;
}

// Returns nothing if one palette cannot hold the colors on the canvas and those of the image.
std::optional<IndexMapping> Canvas::mappingFor(const SubImage& image, const ColorTable& colors,
                                               std::span<const std::uint8_t> indices) {
  if (shape_.format != PixelFormat::Indexed) return std::nullopt;
  IndexSet shown{};
  std::fill_n(shown.begin(), std::min(colors.size(), maxColors), true);
  if (image.transparentIndex) shown[*image.transparentIndex] = false;
  if (auto mapping = matchColors(palette_, shown, colors)) return mapping;
  const IndexSet used = usedIndices(indices);
  std::ranges::transform(shown, used, shown.begin(), std::logical_and<>());
  if (auto mapping = matchColors(palette_, shown, colors)) return mapping;
  dropUnusedColors();
  return matchColors(palette_, shown, colors);
}

IndexSet Canvas::indicesOnCanvas() const {
  IndexSet used{};
  for (const auto& strip : strips_) {
    for (int row = 0; row < strip->rowCount(); ++row) {
      const IndexSet inRow = usedIndices({strip->row(row), strip->rowLength()});
      for (std::size_t index = 0; index < maxColors; ++index) used[index] |= inRow[index];
    }
  }
  return used;
}

// Also merges equal colors: an image's palette may contain some twice.
void Canvas::dropUnusedColors() {
  const IndexSet used = indicesOnCanvas();
  const Palette before = std::exchange(palette_, {});
  std::array<std::uint8_t, maxColors> moved{};
  for (std::size_t index = 0; index < before.count; ++index) {
    if (used[index]) moved[index] = *indexOfColor(palette_, before.colors[index]);
  }
  moveIndices(moved);
}

// Lets the image's indices stay the same if possible, because drawing is faster then. A palette for
// which more pixels have been translated than the canvas has is likely to be that of more images.
void Canvas::improve(IndexMapping& mapping, const SubImage& image, const ColorTable& colors,
                     std::span<const std::uint8_t> indices) {
  const IndexMapping forAll = mapping;
  keepUnused(mapping, usedIndices(indices));
  if (keepsIndices(mapping)) return;
  if (std::exchange(translatedColors_, colors) != colors) translatedPixels_ = 0;
  translatedPixels_ += std::int64_t{image.width} * image.height;
  if (translatedPixels_ <= std::int64_t{shape_.width} * shape_.height) return;
  if (renumberLike(colors, forAll)) mapping = sameIndices(forAll.isShown);
  translatedPixels_ = 0;
}

// Gives the colors on the canvas the indices that they have in the image, so that this image and
// others with its colors are copied instead of translated. Returns false, with the canvas
// unchanged, if there is not enough room for the canvas's other colors, or if a PNG of more colors
// would have more bits per pixel.
bool Canvas::renumberLike(const ColorTable& colors, const IndexMapping& mapping) {
  constexpr std::size_t fewColors = 16;
  if (palette_.count <= fewColors) return false;
  Palette palette;
  std::array<std::uint8_t, maxColors> moved{};
  IndexSet isMoved{};
  auto move = [&](std::size_t from, std::size_t to) {
    if (!std::exchange(isMoved[from], true)) moved[from] = static_cast<std::uint8_t>(to);
    palette.count = std::max(palette.count, to + 1);
  };
  for (std::size_t index = 0; index < maxColors; ++index) {
    if (!mapping.isShown[index]) continue;
    palette.colors[index] = opaque(colors[index]);
    move(mapping.to[index], index);
  }
  const IndexSet used = indicesOnCanvas();
  std::size_t free = 0;
  for (std::size_t index = 0; index < palette_.count; ++index) {
    if (isMoved[index] || !used[index]) continue;
    while (free < maxColors && mapping.isShown[free]) ++free;
    if (free == maxColors) return false;
    palette.colors[free] = palette_.colors[index];
    move(index, free++);
  }
  palette_ = palette;
  moveIndices(moved);
  return true;
}

void Canvas::moveIndices(const std::array<std::uint8_t, maxColors>& moved) {
  for (int y = 0; y < shape_.height; ++y) {
    std::uint8_t* row = writableRow(y);
    std::transform(row, row + shape_.width, row,
                   [&moved](std::uint8_t index) { return moved[index]; });
  }
}

void Canvas::becomeRGBA() {
  if (shape_.format == PixelFormat::RGBA) return;
  shape_.format = PixelFormat::RGBA;
  for (std::size_t index = 0; index < strips_.size(); ++index) {
    auto strip = shape_.makeStrip(static_cast<int>(index));
    for (int row = 0; row < strip->rowCount(); ++row) {
      const std::uint8_t* source = strips_[index]->row(row);
      std::uint8_t* target = strip->row(row);
      for (int x = 0; x < shape_.width; ++x, target += sizeof(RGBAColor)) {
        std::memcpy(target, palette_.colors[source[x]].data(), sizeof(RGBAColor));
      }
    }
    strips_[index] = own_[index] = std::move(strip);
  }
}

void Canvas::drawIndices(const SubImage& image, const IndexMapping& mapping,
                         std::span<const std::uint8_t> indices) {
  const std::size_t width = visiblePart(shape_, image).width;
  const IndexBlitter blitter(mapping, std::size_t{1} << image.minimumCodeSize);
  forEachRow(shape_, image, indices, [&](int y, const std::uint8_t* source) {
    blitter.drawRow(writableRow(y) + image.left, source, width);
  });
}

void Canvas::drawColors(const SubImage& image, const ColorTable& colors,
                        std::span<const std::uint8_t> indices) {
  std::array<std::uint32_t, maxColors> table{};
  std::ranges::transform(colors, table.begin(), [](const Color& color) {
    return std::bit_cast<std::uint32_t>(opaque(color));
  });
  if (image.transparentIndex) table[*image.transparentIndex] = 0;
  const std::size_t width = visiblePart(shape_, image).width;
  forEachRow(shape_, image, indices, [&](int y, const std::uint8_t* source) {
    std::uint8_t* target = writableRow(y) + image.left * sizeof(RGBAColor);
    for (std::size_t x = 0; x < width; ++x, target += sizeof(RGBAColor)) {
      std::uint32_t old = 0;
      std::memcpy(&old, target, sizeof old);
      const std::uint32_t color = table[source[x]];
      // Always stores, because a branch would often be mispredicted.
      const std::uint32_t shown = color == 0 ? old : color;
      std::memcpy(target, &shown, sizeof shown);
    }
  });
}

void Canvas::clear(const SubImage& image) {
  if (covers(image)) return makeBlank();
  std::uint8_t fill = 0;
  if (shape_.format == PixelFormat::Indexed) {
    auto index = indexOfColor(palette_, transparent);
    if (!index) {
      dropUnusedColors();
      index = indexOfColor(palette_, transparent);
    }
    if (index) {
      fill = *index;
    } else {
      becomeRGBA();
    }
  }
  const Visible visible = visiblePart(shape_, image);
  const std::size_t pixelSize = bytesPerPixel(shape_.format);
  for (int y = image.top; visible.width > 0 && y < visible.bottom; ++y) {
    std::memset(writableRow(y) + image.left * pixelSize, fill, visible.width * pixelSize);
  }
}

// Copies the strip first if it is shared.
std::uint8_t* Canvas::writableRow(int y) {
  const int rows = shape_.rowsPerStrip();
  const auto index = static_cast<std::size_t>(y / rows);
  if (!own_[index]) {
    own_[index] = shape_.makeStrip(y / rows);
    std::ranges::copy(strips_[index]->bytes(), own_[index]->bytes().begin());
    strips_[index] = own_[index];
  }
  return own_[index]->row(y % rows);
}

// Returns true if the last image's strips look the same with the present palette.
bool Canvas::looksLikeLast() const {
  if (!last_ || !(last_->impl().shape == shape_)) return false;
  if (shape_.format == PixelFormat::RGBA) return true;
  const Palette& palette = *last_->impl().palette;
  const auto count = static_cast<std::ptrdiff_t>(palette.count);
  return std::equal(palette.colors.begin(), palette.colors.begin() + count,
                    palette_.colors.begin());
}

// Returns nullptr unless the canvas is RGBA without need. If that happens twice in a row, the
// canvas gets indices again; until then the next image would often make it RGBA at once.
ImageRef Canvas::pictureOfFewColors() {
  const PictureShape indexed{shape_.width, shape_.height, PixelFormat::Indexed};
  auto found = shape_ == indexed ? std::nullopt : withPalette(indexed, strips_);
  if (std::exchange(hadFewColors_, found.has_value()) && found) {
    shape_ = indexed;
    palette_ = found->palette;
    strips_ = std::move(found->strips);
    return nullptr;
  }
  if (!found) return nullptr;
  return last_ = makeImage(indexed, std::make_shared<const Palette>(found->palette),
                           std::move(found->strips));
}

ImageRef Canvas::picture() {
  // In a small file, unused colors may take more bytes than the pixels.
  constexpr int smallPicture = 1 << 14;
  if (shape_.format == PixelFormat::Indexed && shape_.width * shape_.height <= smallPicture) {
    dropUnusedColors();
  }
  own_.assign(own_.size(), nullptr);
  if (auto image = pictureOfFewColors()) return image;
  std::shared_ptr<const Palette> palette;
  if (looksLikeLast()) {
    const UIImage::Impl& last = last_->impl();
    for (std::size_t index = 0; index < strips_.size(); ++index) {
      const auto& before = last.strips[index];
      const bool isSame =
          strips_[index] == before || std::ranges::equal(strips_[index]->bytes(), before->bytes());
      if (isSame) strips_[index] = before;
    }
    if (strips_ == last.strips) return last_;
    if (last.palette && *last.palette == palette_) palette = last.palette;
  }
  if (!palette && shape_.format == PixelFormat::Indexed) {
    palette = std::make_shared<const Palette>(palette_);
  }
  return last_ = makeImage(shape_, std::move(palette), strips_);
}

Canvas::Contents Canvas::save() {
  own_.assign(own_.size(), nullptr);
  return {shape_, palette_, strips_, isBlank_};
}

void Canvas::restore(const Contents& saved) {
  shape_ = saved.shape;
  palette_ = saved.palette;
  strips_ = saved.strips;
  isBlank_ = saved.isBlank;
  own_.assign(own_.size(), nullptr);
}

}  // namespace platform::backend::gif
