// Draws rows of an image's indices over rows of a canvas, with the fastest loop that the mapping
// allows.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "platform/linux/images/gif/palette_matcher.h"

namespace platform::backend::gif {

class IndexBlitter {
 public:
  // Requires that the rows only contain indices below indexCount.
  IndexBlitter(const IndexMapping& mapping, std::size_t indexCount);

  void drawRow(std::uint8_t* target, const std::uint8_t* source, std::size_t width) const {
    (this->*strategy_)(target, source, width);
  }

 private:
  using Strategy = void (IndexBlitter::*)(std::uint8_t* target, const std::uint8_t* source,
                                          std::size_t width) const;
  // Requires that all indices are shown and stay the same.
  void copyRow(std::uint8_t* target, const std::uint8_t* source, std::size_t width) const;
  // Requires that all but one index are shown and stay the same.
  void copyRowExceptHidden(std::uint8_t* target, const std::uint8_t* source,
                           std::size_t width) const;
  void translateRow(std::uint8_t* target, const std::uint8_t* source, std::size_t width) const;

  // The new index is (old & kept) | added.
  struct Change {
    std::uint8_t kept;
    std::uint8_t added;
  };

  Strategy strategy_ = &IndexBlitter::translateRow;
  std::uint8_t hiddenIndex_ = 0;
  std::array<Change, maxColors> changes_;
};

}  // namespace platform::backend::gif
