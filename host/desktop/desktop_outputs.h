// The outputs of a desktop, as a display system gives them.
#pragma once

#include <vector>

#include "host/home_screen/output.h"
#include "host/wallpaper/wallpaper_picture.h"

namespace host {

// Main thread.
class DesktopOutputs {
 public:
  virtual ~DesktopOutputs() = default;
  // In the order in which the display system announced them. There may be none for a time.
  virtual std::vector<Output> outputs() const = 0;
  // Paints what has changed since the last call on every output, and everything on new ones.
  virtual void show(const WallpaperPicture& picture) = 0;
  // Call it when other outputs have been chosen.
  virtual void noteChoice() = 0;
  // Returns true while an output that can be seen is in a transition, which needs further calls of
  // show.
  virtual bool isFading() const = 0;
};

}  // namespace host
