// The GIFs that the user may want. Any thread.
#pragma once

#include <string>
#include <vector>

namespace settings_window {

// Returns the paths of the GIFs in the user's folder for pictures and those that are installed with
// Lumora, newest first, at most maxCount. samples: the folder of the installed ones.
std::vector<std::string> listGIFs(const std::string& pictures, const std::string& samples,
                                  std::size_t maxCount);

}  // namespace settings_window
