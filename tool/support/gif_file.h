// Reads and checks a GIF that the user chose.
#pragma once

#include <memory>
#include <string>

#include "command_line/failure.h"
#include "platform/data.h"
#include "platform/image_source.h"

namespace tool {

struct ChosenGif {
  // For messages: the path as the user gave it, or words such as "standard input".
  std::string name;
  platform::DataRef data;
};

// Which frame of a GIF must be decodable.
enum class Wanted { FirstFrame, AnyFrame };

// Opens a file without decoding it. path: "-" is standard input. Throws Failure, with the reason,
// if the file cannot be read.
ChosenGif openGif(const std::string& path);

// Returns a source of the GIF's frames. Throws Failure, with the reason, if the wanted frame cannot
// be decoded.
std::unique_ptr<platform::CGImageSource> framesOf(const ChosenGif& gif, Wanted wanted);

// Opens a file and checks that its first frame can be decoded. Throws as above.
ChosenGif readGif(const std::string& path);

// The same for bytes that have been read. name: for messages.
ChosenGif checkGif(const std::string& name, platform::DataRef data);

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
