// Applies changed settings to an existing view. Each update reads the setting of the view's
// location. Updates are called on the thread that delivers Darwin notifications; views are changed
// from blocks on the main queue. Failures are silent.
#pragma once

#include <memory>

namespace lumora {

class LWGIFView;

// Makes the notifications of a change call the updates below for this view, as long as it exists.
// Any thread.
void observeSettings(const std::shared_ptr<LWGIFView>& view);

// Changes the speed with the next refresh; playback is not restarted.
void updateGIFSpeed(const std::shared_ptr<LWGIFView>& view);

// Sets the opacity of the image view, not of the view itself.
void updateGIFAlpha(const std::shared_ptr<LWGIFView>& view);

// Rewrites every frame file in the background (FrameExtraction::rewriteFrames). Playback continues
// and shows each new file when its frame is due again.
void updateGIFBlur(const std::shared_ptr<LWGIFView>& view);

// Removes the shared view in separate mode, and the other two in shared mode, from its superview
// and records that in the settings. Does nothing in any other mode. A view removes itself because
// it is the view that observes the notification, and placement, which removes others, is above
// gifview.
void removeUnneededViews(const std::shared_ptr<LWGIFView>& view);

}  // namespace lumora
