// Reads and checks a GIF that the user chose.
#pragma once

#include <string>

#include "platform/data.h"

namespace phone {

struct ChosenGif {
  // For messages: the path as the user gave it, or words such as "standard input".
  std::string name;
  platform::DataRef data;
  // The number of its images, and of those that can be decoded.
  int images = 0;
  int frames = 0;
};

// path: "-" is standard input. Prints a warning on stderr if some frames cannot be shown. Throws
// Failure, with the reason, if the file cannot be read or none of its frames can be decoded.
ChosenGif readGif(const std::string& path);
// The same for bytes that have been read. name: for messages. start: the first bytes.
ChosenGif checkGif(const std::string& name, platform::DataRef data, const std::string& start);

}  // namespace phone
