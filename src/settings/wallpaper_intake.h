// Takes a newly chosen GIF into the library directory.
// The file names that it recognizes are in locations.cpp.
#pragma once

namespace lumora {

// Moves the file that "SAFARI_DIRECTORY" names into the library directory. The file's name selects
// the location, whose old GIF and frame cache are deleted and whose mode is stored under
// "MODE_INDEX". The incoming file is deleted if it cannot be moved or its name selects no location;
// a folder at its path is left alone. Failures are silent. Any thread; returns when all is done.
void takeInWallpaperFile();

}  // namespace lumora
