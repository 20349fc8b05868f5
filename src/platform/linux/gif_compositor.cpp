#include "platform/linux/gif_compositor.h"

#include <algorithm>

#include "platform/linux/gif_lzw.h"

namespace platform::gif {
namespace {

constexpr std::size_t bytesPerPixel = 4;

// The part of an image's rectangle that lies on the canvas.
struct Visible {
  int right;
  int bottom;
};

Visible visiblePart(const File& file, const Image& image) {
  return {std::min(image.left + image.width, file.width),
          std::min(image.top + image.height, file.height)};
}

// The image's rows in the order in which their data come.
std::vector<int> rowOrder(const Image& image) {
  struct Pass {
    int first;
    int step;
  };
  constexpr Pass plain[] = {{0, 1}};
  constexpr Pass interlaced[] = {{0, 8}, {4, 8}, {2, 4}, {1, 2}};
  const std::span<const Pass> passes =
      image.interlaced ? std::span<const Pass>(interlaced) : std::span<const Pass>(plain);
  std::vector<int> rows;
  for (const Pass& pass : passes) {
    for (int row = pass.first; row < image.height; row += pass.step) rows.push_back(row);
  }
  return rows;
}

bool isSound(const Image& image) {
  const std::int64_t pixels = std::int64_t{image.width} * image.height;
  return pixels > 0 && pixels <= mostPixels;
}

}  // namespace

ImageRef Compositor::picture(int index) {
  if (index < seen_ - 1) restart();
  while (seen_ <= index) {
    isSound_ = false;
    isSound_ = draw(file_.images[static_cast<std::size_t>(seen_++)]);
  }
  if (!isSound_) return nullptr;
  return std::make_shared<UIImage>(UIImage{file_.width, file_.height, canvas_});
}

void Compositor::restart() {
  canvas_.clear();
  previousCanvas_.clear();
  seen_ = 0;
  drawn_ = nullptr;
}

bool Compositor::draw(const Image& image) {
  if (!isSound(image)) return false;
  Bytes indices(static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height));
  if (!decodeLzw(image.data, image.minimumCodeSize, indices)) return false;
  const auto canvasPixels = static_cast<std::size_t>(std::int64_t{file_.width} * file_.height);
  canvas_.resize(canvasPixels * bytesPerPixel);
  if (drawn_ != nullptr) dispose(*drawn_);
  if (image.disposal == Disposal::RestorePrevious) previousCanvas_ = canvas_;
  drawPixels(image, indices);
  drawn_ = &image;
  return true;
}

void Compositor::dispose(const Image& image) {
  if (image.disposal == Disposal::RestorePrevious) canvas_ = previousCanvas_;
  if (image.disposal != Disposal::Clear) return;
  const Visible visible = visiblePart(file_, image);
  for (int y = image.top; y < visible.bottom; ++y) {
    for (int x = image.left; x < visible.right; ++x) {
      const auto pixel = static_cast<std::size_t>(std::int64_t{y} * file_.width + x);
      std::fill_n(canvas_.begin() + static_cast<std::ptrdiff_t>(pixel * bytesPerPixel),
                  bytesPerPixel, std::uint8_t{0});
    }
  }
}

void Compositor::drawPixels(const Image& image, const Bytes& indices) {
  const Visible visible = visiblePart(file_, image);
  const ColorTable& colors = *image.colors;
  const std::uint8_t* source = indices.data();
  for (const int row : rowOrder(image)) {
    const int y = image.top + row;
    for (int x = image.left; y < visible.bottom && x < visible.right; ++x) {
      const std::uint8_t index = source[x - image.left];
      // An index beyond the table shows nothing, like a transparent one.
      if (index == image.transparentIndex || index >= colors.size()) continue;
      std::uint8_t* pixel =
          &canvas_[static_cast<std::size_t>(std::int64_t{y} * file_.width + x) * bytesPerPixel];
      std::copy_n(colors[index].begin(), 3, pixel);
      pixel[3] = 255;
    }
    source += image.width;
  }
}

}  // namespace platform::gif
