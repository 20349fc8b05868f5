// The words for how a GIF fills the screen.
#pragma once

#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "command_line/one_of.h"
#include "settings/scaling.h"

namespace preferences {

// Makes an option accept FIT, FILL and FULLSCREEN, in any case, and the words of other wallpaper
// programs for them. Returns the option.
inline CLI::Option* acceptScaling(CLI::Option* option) {
  using platform::UIViewContentMode;
  std::vector<std::string> names;
  names.reserve(lumora::scalings.size());
  for (const lumora::Scaling& scaling : lumora::scalings) names.emplace_back(scaling.name);
  return command_line::acceptOneOf(option, names,
                                   {{"contain", lumora::nameOf(UIViewContentMode::ScaleAspectFit)},
                                    {"cover", lumora::nameOf(UIViewContentMode::ScaleAspectFill)},
                                    {"stretch", lumora::nameOf(UIViewContentMode::ScaleToFill)}});
}

}  // namespace preferences
