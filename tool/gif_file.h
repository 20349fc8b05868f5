// A GIF that the user chose.
#pragma once

#include <string>

#include "platform/data.h"
#include "tool/failure.h"

namespace tool {

struct ChosenGif {
  platform::DataRef data;
  // As many as the file announces; damaged ones among them.
  int frameCount = 0;
};

Failure noPicture(const std::string& path);

// Throws Failure if the file cannot be read or gives no frame.
ChosenGif readGif(const std::string& path);

}  // namespace tool
