// How the pixels along one side of a scaled picture are made of those of the picture.
#pragma once

#include <cstdint>
#include <vector>

namespace platform::backend::scaling {

// The weight of a whole pixel.
constexpr std::uint32_t whole = 1 << 16;

// Neighboring pixels of the picture, whose weights add up to whole.
struct Taps {
  int first = 0;
  int count = 0;
  // The place of the first weight in Axis::weights.
  int weights = 0;
};

// The sides of a picture and of its scaled form, in pixels of each.
struct Sides {
  int length = 0;
  // Where the scaled picture lies on the target.
  double start = 0;
  double size = 0;
  // The pixels of the target that are wanted. They lie in the scaled picture.
  int first = 0;
  int count = 0;

  bool isEnlarged() const { return size > length; }
  friend bool operator==(const Sides&, const Sides&) = default;
};

struct Axis {
  Sides sides;
  // One for each wanted pixel. A shrunk pixel is the average of the area that it covers; an
  // enlarged one is interpolated linearly between the centers of two pixels.
  std::vector<Taps> taps;
  std::vector<std::uint32_t> weights;

  const std::uint32_t* weightsOf(const Taps& tap) const { return &weights[tap.weights]; }
};

// Any thread. Throws std::bad_alloc.
Axis axisOf(const Sides& sides);

}  // namespace platform::backend::scaling
