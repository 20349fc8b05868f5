#include "platform/linux/images/gif/few_colors.h"

#include <cstring>
#include <utility>

namespace platform::backend::gif {
namespace {

class ColorNumbers {
 public:
  static constexpr int none = -1;

  // Returns none if there are too many colors.
  int numberOf(std::uint32_t color) {
    const Entry& entry = entries_[slotOf(color)];
    if (entry.color == color && entry.number != none) [[likely]]
      return entry.number;
    return search(color);
  }

  const Palette& palette() const { return palette_; }

 private:
  static constexpr int slotBits = 12;

  struct Entry {
    std::uint32_t color = 0;
    int number = none;
  };

  static std::size_t slotOf(std::uint32_t color) { return color * 0x9E3779B1U >> (32 - slotBits); }

  int search(std::uint32_t color) {
    std::size_t slot = slotOf(color);
    while (entries_[slot].number != none && entries_[slot].color != color) {
      slot = (slot + 1) % entries_.size();
    }
    Entry& entry = entries_[slot];
    if (entry.number != none || palette_.count == maxColors) return entry.number;
    entry = {color, static_cast<int>(palette_.count)};
    std::memcpy(palette_.colors[palette_.count++].data(), &color, sizeof color);
    return entry.number;
  }

  std::array<Entry, std::size_t{1} << slotBits> entries_;
  Palette palette_;
};

// Returns false if there are too many colors.
bool writeNumbers(ColorNumbers& numbers, const std::uint8_t* pixels, std::size_t width,
                  std::uint8_t* target) {
  int all = 0;
  for (std::size_t x = 0; x < width; ++x) {
    std::uint32_t color = 0;
    std::memcpy(&color, pixels + x * sizeof color, sizeof color);
    const int number = numbers.numberOf(color);
    all |= number;
    target[x] = static_cast<std::uint8_t>(number);
  }
  return all >= 0;
}

}  // namespace

// Looks at every eighth row first, in which most colors appear, so that too many are soon found.
std::optional<IndexedStrips> withPalette(const PictureShape& indexed, const Strips& strips) {
  constexpr int passes = 8;
  ColorNumbers numbers;
  std::vector<std::shared_ptr<Strip>> targets;
  targets.reserve(strips.size());
  for (int index = 0; index < indexed.stripCount(); ++index) {
    targets.push_back(indexed.makeStrip(index));
  }
  for (int pass = 0; pass < passes; ++pass) {
    for (std::size_t index = 0; index < targets.size(); ++index) {
      Strip& target = *targets[index];
      for (int row = pass; row < target.rowCount(); row += passes) {
        const std::uint8_t* pixels = strips[index]->row(row);
        if (!writeNumbers(numbers, pixels, target.rowLength(), target.row(row)))
          return std::nullopt;
      }
    }
  }
  return IndexedStrips{numbers.palette(), Strips(targets.begin(), targets.end())};
}

}  // namespace platform::backend::gif
