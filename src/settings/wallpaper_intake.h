// Takes a newly chosen GIF into the library directory.
#pragma once

namespace lumora {

// Moves the file that "SAFARI_DIRECTORY" names to the place of the location that its name selects,
// throws away that location's old GIF and frame cache and stores the matching "MODE_INDEX". The
// incoming file is used at most once: it is gone afterwards whatever happened. A folder at that
// path is no incoming file: it stays where it is. All failures are silent. Synchronous, any thread.
void takeInWallpaperFile();

}  // namespace lumora
