// Applies changed settings to an existing view. Each function reads the setting of the view's
// location. Called on the thread that delivers Darwin notifications; views are changed from blocks
// on the main queue. Failures are silent.
#pragma once

#include <memory>

namespace lumora {

class LWGIFView;

// Changes the speed with the next refresh; playback is not restarted.
void updateGIFSpeed(const std::shared_ptr<LWGIFView>& view);

// Sets the opacity of the image view, not of the view itself.
void updateGIFAlpha(const std::shared_ptr<LWGIFView>& view);

// Rewrites every frame file in the background (FrameExtraction::rewriteFrames). Playback continues
// and shows each new file when its frame is due again.
void updateGIFBlur(const std::shared_ptr<LWGIFView>& view);

// Removes the shared view in separate mode, and the other two in shared mode, from its superview
// and records that in the settings. Does nothing in any other mode.
void removeUnneededViews(const std::shared_ptr<LWGIFView>& view);

}  // namespace lumora
