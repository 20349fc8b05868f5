#include "examples/loop_gif.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <map>
#include <memory>
#include <stdexcept>
#include <unordered_map>
#include <utility>
#include <vector>

#include <gif_lib.h>

namespace {

// A frame as indices into the palette.
using Indices = std::vector<GifByteType>;

int channel(std::uint32_t color, int shift) {
  return static_cast<int>(color >> shift & 255);
}

int distance(std::uint32_t a, std::uint32_t b) {
  int sum = 0;
  for (const int shift : {0, 8, 16}) {
    const int gap = channel(a, shift) - channel(b, shift);
    sum += gap * gap;
  }
  return sum;
}

constexpr std::size_t paletteSize = 256;
// The index that means transparent.
constexpr GifByteType transparent = paletteSize - 1;

// Chooses colors of the frames, each the one farthest from all chosen before, because dithering
// needs the extremes. Frequent colors count as farther, so that gradients get more of them.
Picture choosePalette(const std::vector<Picture>& frames) {
  constexpr std::size_t sampleStep = 6;
  constexpr double countExponent = 0.4;
  std::map<std::uint32_t, double> counts;
  for (std::size_t i = 0; i < frames.size(); i += sampleStep) {
    for (const std::uint32_t color : frames[i]) ++counts[color];
  }
  struct Candidate {
    std::uint32_t color;
    double weight;
    double gap;
  };
  std::vector<Candidate> candidates;
  for (const auto& [color, count] : counts) {
    candidates.push_back(
        {color, std::pow(count, countExponent), std::numeric_limits<double>::max()});
  }
  Picture palette{candidates.front().color};
  while (palette.size() < transparent) {
    for (Candidate& candidate : candidates) {
      candidate.gap =
          std::min(candidate.gap, candidate.weight * distance(candidate.color, palette.back()));
    }
    palette.push_back(
        std::max_element(candidates.begin(), candidates.end(),
                         [](const Candidate& a, const Candidate& b) { return a.gap < b.gap; })
            ->color);
  }
  // From dark to bright, so that a blend sorted by index is sorted by brightness, too.
  std::stable_sort(palette.begin(), palette.end(), [](std::uint32_t a, std::uint32_t b) {
    const auto brightness = [](std::uint32_t color) {
      return 30 * channel(color, 16) + 59 * channel(color, 8) + 11 * channel(color, 0);
    };
    return brightness(a) < brightness(b);
  });
  return palette;
}

// Ordered dithering. A pixel's index depends on its color and position only, so that parts of the
// drawing that do not move do not change in the GIF either.
class Ditherer {
 public:
  Ditherer(Picture palette, int width) : palette_(std::move(palette)), width_(width) {}

  Indices dither(const Picture& picture) {
    constexpr std::array<int, levelCount> bayer{0, 8,  2, 10, 12, 4, 14, 6,
                                                3, 11, 1, 9,  15, 7, 13, 5};
    Indices indices(picture.size());
    for (std::size_t i = 0; i < picture.size(); ++i) {
      const auto [known, isNew] = blends_.try_emplace(picture[i]);
      if (isNew) known->second = blendFor(picture[i]);
      indices[i] = known->second[bayer[i / width_ % 4 * 4 + i % width_ % 4]];
    }
    return indices;
  }

 private:
  static constexpr int levelCount = 16;
  // Returns indices whose colors average to a color, dark first.
  using Blend = std::array<GifByteType, levelCount>;

  Blend blendFor(std::uint32_t color) const {
    // Keeps out colors that are far from the wanted one.
    constexpr int maxCarriedError = 10;
    Blend blend;
    std::array<int, 3> error{};
    for (GifByteType& index : blend) {
      std::uint32_t wanted = 0;
      for (int i = 0; i < 3; ++i) {
        wanted |= std::clamp(channel(color, 8 * i) + error[i], 0, 255) << 8 * i;
      }
      const auto nearest = std::min_element(palette_.begin(), palette_.end(), [&](auto a, auto b) {
        return distance(a, wanted) < distance(b, wanted);
      });
      index = static_cast<GifByteType>(nearest - palette_.begin());
      for (int i = 0; i < 3; ++i) {
        const int missed = channel(wanted, 8 * i) - channel(*nearest, 8 * i);
        error[i] = std::clamp(missed, -maxCarriedError, maxCarriedError);
      }
    }
    std::sort(blend.begin(), blend.end());
    return blend;
  }

  Picture palette_;
  std::size_t width_;
  std::unordered_map<std::uint32_t, Blend> blends_;
};

struct Rectangle {
  int left;
  int top;
  int right;
  int bottom;
};

// Returns the changed part, or one pixel if nothing changed, because a GIF frame cannot be empty.
Rectangle changedPart(const LoopFormat& format, const Indices& before, const Indices& after) {
  Rectangle part{format.width, format.height, 0, 0};
  for (int y = 0; y < format.height; ++y) {
    for (int x = 0; x < format.width; ++x) {
      if (before[y * format.width + x] == after[y * format.width + x]) continue;
      part = {std::min(part.left, x), std::min(part.top, y), std::max(part.right, x + 1),
              std::max(part.bottom, y + 1)};
    }
  }
  return part.right > 0 ? part : Rectangle{0, 0, 1, 1};
}

// Makes every unchanged pixel transparent, because long runs compress well.
Indices hideUnchanged(const Indices& before, Indices after) {
  for (std::size_t i = 0; i < after.size(); ++i) {
    if (after[i] == before[i]) after[i] = transparent;
  }
  return after;
}

// Writes a GIF that loops forever. Throws std::runtime_error on failure.
class GifWriter {
 public:
  GifWriter(const char* path, const LoopFormat& format, const Picture& palette)
      : format_(format), gif_(EGifOpenFileName(path, false, nullptr)) {
    check(gif_ != nullptr);
    EGifSetGifVersion(gif_.get(), true);
    std::array<GifColorType, paletteSize> colors{};
    std::transform(palette.begin(), palette.end(), colors.begin(), [](std::uint32_t color) {
      const auto byte = [&](int shift) { return static_cast<GifByteType>(channel(color, shift)); };
      return GifColorType{byte(16), byte(8), byte(0)};
    });
    ColorMapObject map{paletteSize, colorBits, false, colors.data()};
    constexpr std::array<GifByteType, 3> loopForever{1, 0, 0};
    check(EGifPutScreenDesc(gif_.get(), format.width, format.height, colorBits, 0, &map) &&
          EGifPutExtensionLeader(gif_.get(), APPLICATION_EXT_FUNC_CODE) &&
          EGifPutExtensionBlock(gif_.get(), 11, "NETSCAPE2.0") &&
          EGifPutExtensionBlock(gif_.get(), loopForever.size(), loopForever.data()) &&
          EGifPutExtensionTrailer(gif_.get()));
  }

  void addFrame(const Indices& indices, const Rectangle& part) {
    const GraphicsControlBlock control{DISPOSE_DO_NOT, false, format_.delayCentiseconds,
                                       transparent};
    std::array<GifByteType, 4> extension{};
    EGifGCBToExtension(&control, extension.data());
    const int width = part.right - part.left;
    const int height = part.bottom - part.top;
    check(
        EGifPutExtension(gif_.get(), GRAPHICS_EXT_FUNC_CODE, extension.size(), extension.data()) &&
        EGifPutImageDesc(gif_.get(), part.left, part.top, width, height, false, nullptr));
    for (int y = part.top; y < part.bottom; ++y) {
      const auto start = indices.begin() + y * format_.width + part.left;
      Indices row(start, start + width);
      check(EGifPutLine(gif_.get(), row.data(), width));
    }
  }

  void finish() { check(EGifCloseFile(gif_.release(), nullptr)); }

 private:
  static constexpr int colorBits = 8;

  struct Closer {
    void operator()(GifFileType* gif) const { EGifCloseFile(gif, nullptr); }
  };

  static void check(bool worked) {
    if (!worked) throw std::runtime_error("cannot write the GIF");
  }

  LoopFormat format_;
  std::unique_ptr<GifFileType, Closer> gif_;
};

}  // namespace

void writeLoopGif(const char* path, const LoopFormat& format, const std::vector<Picture>& frames) {
  const Picture palette = choosePalette(frames);
  Ditherer ditherer(palette, format.width);
  GifWriter gif(path, format, palette);
  Indices before(frames.front().size(), transparent);
  for (const Picture& frame : frames) {
    Indices after = ditherer.dither(frame);
    gif.addFrame(hideUnchanged(before, after), changedPart(format, before, after));
    before = std::move(after);
  }
  gif.finish();
}
