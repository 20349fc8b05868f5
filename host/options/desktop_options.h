// Where and how a desktop shows the wallpaper, apart from its scaling.
#pragma once

#include <chrono>
#include <string>
#include <vector>

namespace host {

// How an enlarged picture's pixels are drawn. Auto: Nearest for a small picture that is enlarged by
// a whole number, otherwise Smooth.
enum class Filter { Auto, Nearest, Smooth };

// Blur: a blurred and darkened copy of the picture.
enum class BackdropKind { Blur, Color };

struct BackdropOptions {
  BackdropKind kind = BackdropKind::Blur;
  // From 0 to 1.
  double red = 0;
  double green = 0;
  double blue = 0;
};

struct DesktopOptions {
  // The names of the outputs that show the wallpaper; all do if there is none.
  std::vector<std::string> outputs;
  // True if one picture spans all of these outputs.
  bool isSpanning = false;
  // How long a new wallpaper takes to replace the old one.
  std::chrono::duration<double> transition{0.5};
  // True if the wallpaper pauses while power is to be saved.
  bool pausesOnBattery = false;
  Filter filter = Filter::Auto;
  BackdropOptions backdrop;
};

}  // namespace host
