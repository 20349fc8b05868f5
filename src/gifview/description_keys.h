// What an LWGIFView tells of itself (LWGIFView::describe), beside what every view does.
#pragma once

namespace lumora::description {

// Text: of the view's location.
constexpr auto identifier = "identifier";
// Flag: there is a display link.
constexpr auto playing = "playing";
// Integer: the index of the frame shown last; -1 before the first.
constexpr auto frameShown = "frame_shown";
// Integer: the length of the list of delays.
constexpr auto framesInCache = "frames_in_cache";
// Integer: where an extraction ends, or a cycle.
constexpr auto frameCount = "frame_count";
// Integer: how many frames have been shown since the view was made.
constexpr auto framesShown = "frames_shown";
// Number: the factor of the GIF's own speed.
constexpr auto speed = "speed";
// Number: the opacity of the image view, 0 to 1; only once the view is set up.
constexpr auto alpha = "alpha";
// Integer: the image view's UIViewContentMode; only once the view is set up.
constexpr auto contentMode = "content_mode";

}  // namespace lumora::description
