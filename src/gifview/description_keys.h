// The names that LWGIFView::describe adds to those of every view.
#pragma once

namespace lumora::description {

// Text: the identifier of the view's location.
constexpr auto identifier = "identifier";
// Flag: true if there is a display link.
constexpr auto playing = "playing";
// Integer: the index of the frame shown last; -1 before the first.
constexpr auto frameShown = "frame_shown";
// Integer: the length of the list of delays; 0 without one.
constexpr auto framesInCache = "frames_in_cache";
// Integer: the number of frames after which a cycle ends.
constexpr auto frameCount = "frame_count";
// Integer: the number of frames shown since the view was created.
constexpr auto framesShown = "frames_shown";
// Number: the factor of the GIF's speed.
constexpr auto speed = "speed";
// Number: the opacity of the image view, 0 to 1. Missing until the view is set up.
constexpr auto alpha = "alpha";
// Integer: the image view's UIViewContentMode. Missing until the view is set up.
constexpr auto contentMode = "content_mode";

}  // namespace lumora::description
