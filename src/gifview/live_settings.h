// Settings that a view follows while it lives: each function reads the setting of the view's
// location afresh and applies it. Called where Darwin notifications are delivered; views are
// touched on the main queue only.
#pragma once

#include <memory>

namespace lumora {

class LWGIFView;

// Takes effect from the next refresh on; the display link goes on.
void updateGIFSpeed(const std::shared_ptr<LWGIFView>& view);

// Sets the opacity of the image view, not of the view itself.
void updateGIFAlpha(const std::shared_ptr<LWGIFView>& view);

// Rewrites every frame file in the background, also with a radius of 0, and posts a notification at
// the end. Playback goes on and shows each new file when its frame is due next.
void updateGIFBlur(const std::shared_ptr<LWGIFView>& view);

// Removes the view from its superview, and records that in the settings, if the mode does not use
// it.
void removeUnneededViews(const std::shared_ptr<LWGIFView>& view);

}  // namespace lumora
