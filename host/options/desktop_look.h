// How a desktop shows the wallpaper's picture, apart from its scaling.
#pragma once

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

struct DesktopLook {
  Filter filter = Filter::Auto;
  BackdropOptions backdrop;
};

}  // namespace host
