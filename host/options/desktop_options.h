// Where and how a desktop shows the wallpaper, apart from its scaling.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <string>
#include <vector>

namespace host {

// How an enlarged picture's pixels are drawn. Auto: Nearest for a small picture that is enlarged by
// a whole number, otherwise Smooth.
enum class Filter { Auto, Nearest, Smooth };

// What a screen shows beside the wallpaper's picture. Blur: a blurred and darkened copy of it.
// Still: the landscape that is shown without a picture. File: another picture, which fills the
// screen.
enum class BackdropKind { Blur, Still, Color, File };

struct BackdropOptions {
  BackdropKind kind = BackdropKind::Blur;
  // From 0 to 1.
  double red = 0;
  double green = 0;
  double blue = 0;
  // The absolute path of a PNG, or of a GIF, of which the first frame is shown.
  std::string file;

  bool operator==(const BackdropOptions&) const = default;
};

struct DesktopOptions {
  // The names of the outputs that show the wallpaper; all do if there is none.
  std::vector<std::string> outputs;
  // The names of outputs that do not show it even so.
  std::vector<std::string> exceptedOutputs;
  // Returns true if the output with this name is one of outputs.
  bool isWanted(const std::string& output) const {
    return outputs.empty() || std::ranges::find(outputs, output) != outputs.end();
  }
  // Returns true if the output with this name shows the wallpaper.
  bool isChosen(const std::string& output) const {
    return isWanted(output) && std::ranges::find(exceptedOutputs, output) == exceptedOutputs.end();
  }
  // True if one picture spans all of these outputs.
  bool isSpanning = false;
  // How long a new wallpaper takes to replace the old one.
  std::chrono::duration<double> transition{0.5};
  // True if the wallpaper pauses while power is to be saved.
  bool pausesOnBattery = false;
  Filter filter = Filter::Auto;
  // Also on another display.
  BackdropOptions backdrop;
  // How many bytes of drawn frames each output may keep, and the window on another display.
  std::size_t maxKeptBytes = std::size_t{16} << 20;
};

}  // namespace host
