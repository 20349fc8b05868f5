// The delays of a GIF's frames.
#pragma once

#include <memory>
#include <vector>

namespace lumora {

// In seconds; nullptr if the list could not be read. Any thread.
using FrameDurations = std::shared_ptr<const std::vector<double>>;

}  // namespace lumora
