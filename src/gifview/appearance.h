// Settings that a view follows while it lives: each function reads the setting of the view's
// location afresh and applies it. Called where Darwin notifications are delivered; views are
// touched on the main queue only.
#pragma once

#include <memory>

namespace lumora {

class LWGIFView;

// What the settings say for the view's location, read afresh. A view whose identifier is none of
// the three gets the default, without a read.
float speedOf(const LWGIFView& view);
float alphaOf(const LWGIFView& view);
float blurOf(const LWGIFView& view);

// From the next refresh on; the display link goes on.
void updateGIFSpeed(const std::shared_ptr<LWGIFView>& view);

// Of the image view, not of the view itself.
void updateGIFAlpha(const std::shared_ptr<LWGIFView>& view);

// Rewrites every frame file in the background, also with a radius of 0, and says when it is done.
// Playback goes on and picks the new files up as their frames come round.
void updateGIFBlur(const std::shared_ptr<LWGIFView>& view);

// Takes the view off the screen, and notes so in the settings, if the mode no longer uses it.
void removeUnneededViews(const std::shared_ptr<LWGIFView>& view);

}  // namespace lumora
