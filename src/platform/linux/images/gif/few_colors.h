// Finds out if a picture in RGBA has so few colors that a palette holds them. Its PNG is then a
// fraction of the size and made in a fraction of the time. Any thread.
#pragma once

#include <optional>

#include "platform/linux/images/picture/picture.h"

namespace platform::backend::gif {

struct IndexedStrips {
  Palette palette;
  Strips strips;
};

// Returns the picture with a palette of its colors, or nothing if there are too many. Requires
// strips of RGBA and the shape of the same picture with indices. Throws std::bad_alloc.
std::optional<IndexedStrips> withPalette(const PictureShape& indexed, const Strips& strips);

}  // namespace platform::backend::gif
