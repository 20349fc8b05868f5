// Reads and checks a GIF that the user chose.
#pragma once

#include <string>

#include "platform/data.h"
#include "tool/support/failure.h"

namespace tool {

struct ChosenGif {
  // For messages: the path as the user gave it, or words such as "standard input".
  std::string name;
  platform::DataRef data;
};

// Which frame of a GIF must be decodable.
enum class Wanted { FirstFrame, AnyFrame };

// path: "-" is standard input. Throws Failure, with the reason, if the file cannot be read or the
// wanted frame cannot be decoded.
ChosenGif readGif(const std::string& path, Wanted wanted = Wanted::FirstFrame);

// The same for bytes that have been read. name: for messages.
ChosenGif checkGif(const std::string& name, platform::DataRef data,
                   Wanted wanted = Wanted::FirstFrame);

// Throws Failure if this process has run out of memory so far. Otherwise a lack of memory would
// look like damage. name: of the GIF, for the message.
void checkMemory(const std::string& name);

struct FrameCheck {
  // How many frames can be shown.
  int shown = 0;
  // What is damaged, for users; "" if nothing is.
  std::string damage;
};

// Decodes the whole GIF.
FrameCheck checkFrames(const ChosenGif& gif);

// Prints one line on stderr if the GIF is damaged.
void printDamage(const FrameCheck& check);

// The same, but checks the GIF only if this process has found damage while it decoded it.
void warnOfDamage(const ChosenGif& gif);

}  // namespace tool
