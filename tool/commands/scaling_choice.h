// The words for how a GIF fills the screen.
#pragma once

#include <map>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "settings/scaling.h"

namespace tool {

// Makes an option accept FIT, FILL and FULLSCREEN, in any case, and the words of other wallpaper
// programs for them. Returns the option.
inline CLI::Option* acceptScaling(CLI::Option* option) {
  using platform::UIViewContentMode;
  static const std::map<std::string, std::string> namesElsewhere = {
      {"contain", lumora::nameOf(UIViewContentMode::ScaleAspectFit)},
      {"cover", lumora::nameOf(UIViewContentMode::ScaleAspectFill)},
      {"stretch", lumora::nameOf(UIViewContentMode::ScaleToFill)}};
  std::vector<std::string> names;
  names.reserve(lumora::scalings.size());
  for (const lumora::Scaling& scaling : lumora::scalings) names.emplace_back(scaling.name);
  return option->check(CLI::IsMember(names, CLI::ignore_case))
      ->transform(CLI::Transformer(namesElsewhere, CLI::ignore_case).description(""));
}

}  // namespace tool
