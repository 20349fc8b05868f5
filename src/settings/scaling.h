// The ways in which a GIF can fill the screen: the texts that the settings store for them, and the
// content modes that they stand for. Any thread.
#pragma once

#include <array>

#include "platform/view.h"

namespace lumora {

struct Scaling {
  const char* name;
  platform::UIViewContentMode contentMode;
};

inline constexpr std::array<Scaling, 3> scalings = {{
    {"FIT", platform::UIViewContentMode::ScaleAspectFit},
    {"FILL", platform::UIViewContentMode::ScaleAspectFill},
    {"FULLSCREEN", platform::UIViewContentMode::ScaleToFill},
}};

// Returns the text that stands for the content mode, or nullptr if there is none.
constexpr const char* nameOf(platform::UIViewContentMode mode) {
  for (const Scaling& scaling : scalings) {
    if (scaling.contentMode == mode) return scaling.name;
  }
  return nullptr;
}

}  // namespace lumora
