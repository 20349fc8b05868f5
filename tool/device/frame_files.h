// Writes the frames of a GIF without a home screen.
#pragma once

#include <string>

namespace tool {

// Writes a frame cache of the GIF into the folder, which must be empty or missing, and prints how
// many frames there are. gifPath: "-" is standard input. Throws Failure.
void writeFrames(const std::string& gifPath, const std::string& folderName);

}  // namespace tool
