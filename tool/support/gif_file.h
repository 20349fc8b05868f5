// A GIF that the user chose.
#pragma once

#include <string>

#include "platform/data.h"
#include "tool/support/failure.h"

namespace tool {

struct ChosenGif {
  std::string path;
  platform::DataRef data;
  // As many as the file announces; damaged ones among them.
  int frameCount = 0;
};

// Which frame a GIF must give to be of use.
enum class Wanted { FirstFrame, AnyFrame };

// Throws Failure if the file cannot be read or does not give what is wanted.
ChosenGif readGif(const std::string& path, Wanted wanted = Wanted::FirstFrame);

// Throws Failure if anything so far has failed for want of memory; otherwise that looks like
// damage.
void checkMemory(const std::string& path);

// Decodes all of the GIF. Returns how many frames can be shown; if something of it is lost, one
// line on stderr says so.
int countShownFrames(const ChosenGif& gif);

// The same line, for a GIF that this process has decoded already.
void warnOfDamage(const ChosenGif& gif);

}  // namespace tool
