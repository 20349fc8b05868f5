#include "platform/linux/images/gif/canvas.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace platform::backend::gif {
namespace {

constexpr RGBAColor transparent{0, 0, 0, 0};

RGBAColor opaque(const Color& color) {
  return {color[0], color[1], color[2], 255};
}

struct Visible {
  std::size_t width;
  int bottom;
};

// The part of an image's rectangle that lies on the canvas.
Visible visiblePart(const PictureShape& shape, const Image& image) {
  return {
      static_cast<std::size_t>(std::max(0, std::min<int>(image.width, shape.width - image.left))),
      std::min(image.top + image.height, shape.height)};
}

// Calls draw(y, indices) with every row on the canvas, in the order in which the data come, until
// they end.
template <typename Draw>
void forEachRow(const PictureShape& shape, const Image& image,
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

// Four tables of flags at a time, because a store to the one just stored to would wait for it.
std::array<bool, maxColors> usedIndices(std::span<const std::uint8_t> indices) {
  std::array<std::array<bool, maxColors>, 4> used{};
  std::size_t at = 0;
  for (; at + used.size() <= indices.size(); at += used.size()) {
    for (std::size_t lane = 0; lane < used.size(); ++lane) used[lane][indices[at + lane]] = true;
  }
  for (; at < indices.size(); ++at) used[0][indices[at]] = true;
  for (std::size_t index = 0; index < maxColors; ++index) {
    for (const auto& lane : used) used[0][index] = used[0][index] || lane[index];
  }
  return used[0];
}

bool contains(std::span<const std::uint8_t> indices, std::uint8_t index) {
  return std::memchr(indices.data(), index, indices.size()) != nullptr;
}

}  // namespace

Canvas::Canvas(int width, int height) : shape_{width, height, PixelFormat::Indexed} {
  makeBlank();
}

// Blank strips are equal but for the last one's height.
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

bool Canvas::covers(const Image& image) const {
  return image.left == 0 && image.top == 0 && image.width >= shape_.width &&
         image.height >= shape_.height;
}

bool Canvas::isReplacedBy(const Image& image, std::span<const std::uint8_t> indices) const {
  return covers(image) && indices.size() == std::size_t{image.width} * image.height;
}

void Canvas::draw(const Image& image, const ColorTable& colors,
                  std::span<const std::uint8_t> indices) {
  if (isReplacedBy(image, indices) && adopt(image, colors, indices)) {
    Mapping same;
    for (std::size_t index = 0; index < maxColors; ++index) {
      same.to[index] = static_cast<std::uint8_t>(index);
    }
    same.shows.fill(true);
    drawIndices(image, same, indices);
  } else if (const auto mapping = mapSomehow(image, colors, indices)) {
    drawIndices(image, *mapping, indices);
  } else {
    becomeRGBA();
    drawColors(image, colors, indices);
  }
  isBlank_ = false;
}

// Takes over the image's colours with their numbers, if nothing of what was there stays.
bool Canvas::adopt(const Image& image, const ColorTable& colors,
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

std::optional<Canvas::Mapping> Canvas::mapSomehow(const Image& image, const ColorTable& colors,
                                                  std::span<const std::uint8_t> indices) {
  if (shape_.format != PixelFormat::Indexed) return std::nullopt;
  Mapping shown;
  std::fill_n(shown.shows.begin(), std::min(colors.size(), maxColors), true);
  if (image.transparentIndex) shown.shows[*image.transparentIndex] = false;
  if (auto mapping = map(shown, colors)) return mapping;
  const Indices used = usedIndices(indices);
  for (std::size_t index = 0; index < maxColors; ++index) {
    shown.shows[index] = shown.shows[index] && used[index];
  }
  if (auto mapping = map(shown, colors)) return mapping;
  dropUnusedColors();
  return map(shown, colors);
}

// Finds a place in the palette for all colours that are shown, or leaves it as it was.
std::optional<Canvas::Mapping> Canvas::map(const Mapping& shown, const ColorTable& colors) {
  const std::size_t before = palette_.count;
  Mapping mapping = shown;
  for (std::size_t index = 0; index < maxColors; ++index) {
    mapping.to[index] = static_cast<std::uint8_t>(index);
    if (!shown.shows[index]) continue;
    const RGBAColor color = opaque(colors[index]);
    // A number that can stay costs nothing.
    if (index < palette_.count && palette_.colors[index] == color) continue;
    const auto place = indexOf(color);
    if (!place) {
      palette_.count = before;
      return std::nullopt;
    }
    mapping.to[index] = *place;
  }
  return mapping;
}

// Where the palette has the colour, from now on; nothing if it is full.
std::optional<std::uint8_t> Canvas::indexOf(RGBAColor color) {
  const auto end = palette_.colors.begin() + static_cast<std::ptrdiff_t>(palette_.count);
  const auto at = std::find(palette_.colors.begin(), end, color);
  if (at == palette_.colors.end()) return std::nullopt;
  if (at == end) {
    *at = color;
    ++palette_.count;
  }
  return static_cast<std::uint8_t>(at - palette_.colors.begin());
}

// A palette that was taken over may have colours twice; then they become one.
void Canvas::dropUnusedColors() {
  Indices used{};
  for (const auto& strip : strips_) {
    for (int row = 0; row < strip->rowCount(); ++row) {
      const Indices inRow = usedIndices({strip->row(row), strip->rowLength()});
      for (std::size_t index = 0; index < maxColors; ++index) used[index] |= inRow[index];
    }
  }
  const Palette before = std::exchange(palette_, {});
  std::array<std::uint8_t, maxColors> moved{};
  for (std::size_t index = 0; index < before.count; ++index) {
    if (used[index]) moved[index] = *indexOf(before.colors[index]);
  }
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

// Three ways, from the fastest to the one for everything: nothing is hidden or renumbered; one
// index is hidden; whatever else, as what to keep of the index below and what to add to it.
void Canvas::drawIndices(const Image& image, const Mapping& mapping,
                         std::span<const std::uint8_t> indices) {
  const std::size_t width = visiblePart(shape_, image).width;
  bool keepsNumbers = true;
  std::size_t hidden = 0;
  std::uint8_t hiddenIndex = 0;
  for (std::size_t index = 0; index < std::size_t{1} << image.minimumCodeSize; ++index) {
    if (!mapping.shows[index]) {
      ++hidden;
      hiddenIndex = static_cast<std::uint8_t>(index);
    } else if (mapping.to[index] != index) {
      keepsNumbers = false;
    }
  }
  struct Change {
    std::uint8_t kept;
    std::uint8_t added;
  };
  std::array<Change, maxColors> changes;
  for (std::size_t index = 0; index < maxColors; ++index) {
    changes[index] = mapping.shows[index] ? Change{0, mapping.to[index]} : Change{255, 0};
  }
  forEachRow(shape_, image, indices, [&](int y, const std::uint8_t* source) {
    std::uint8_t* target = writableRow(y) + image.left;
    if (keepsNumbers && hidden == 0) {
      std::memcpy(target, source, width);
    } else if (keepsNumbers && hidden == 1) {
      for (std::size_t x = 0; x < width; ++x) {
        target[x] = source[x] == hiddenIndex ? target[x] : source[x];
      }
    } else {
      for (std::size_t x = 0; x < width; ++x) {
        const Change change = changes[source[x]];
        target[x] = static_cast<std::uint8_t>((target[x] & change.kept) | change.added);
      }
    }
  });
}

void Canvas::drawColors(const Image& image, const ColorTable& colors,
                        std::span<const std::uint8_t> indices) {
  std::array<RGBAColor, maxColors> table{};
  std::ranges::transform(colors, table.begin(), opaque);
  if (image.transparentIndex) table[*image.transparentIndex] = transparent;
  const std::size_t width = visiblePart(shape_, image).width;
  forEachRow(shape_, image, indices, [&](int y, const std::uint8_t* source) {
    std::uint8_t* target = writableRow(y) + image.left * sizeof(RGBAColor);
    for (std::size_t x = 0; x < width; ++x, target += sizeof(RGBAColor)) {
      const RGBAColor& color = table[source[x]];
      if (color != transparent) std::memcpy(target, color.data(), sizeof color);
    }
  });
}

void Canvas::clear(const Image& image) {
  if (covers(image)) return makeBlank();
  std::uint8_t fill = 0;
  if (shape_.format == PixelFormat::Indexed) {
    auto index = indexOf(transparent);
    if (!index) {
      dropUnusedColors();
      index = indexOf(transparent);
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

// A strip that others have too is copied first.
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

// Whether the last picture's strips mean the same with the palette of now.
bool Canvas::looksLikeLast() const {
  if (!last_ || !(last_->impl().shape == shape_)) return false;
  if (shape_.format == PixelFormat::RGBA) return true;
  const Palette& palette = *last_->impl().palette;
  const auto count = static_cast<std::ptrdiff_t>(palette.count);
  return std::equal(palette.colors.begin(), palette.colors.begin() + count,
                    palette_.colors.begin());
}

ImageRef Canvas::picture() {
  // In a small file, colours that nothing has weigh more than the pixels.
  constexpr int smallPicture = 1 << 14;
  const bool isIndexed = shape_.format == PixelFormat::Indexed;
  if (isIndexed && shape_.width * shape_.height <= smallPicture) dropUnusedColors();
  own_.assign(own_.size(), nullptr);
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
  if (!palette && isIndexed) {
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
