// Recognizes what a finger does on the screen, or a mouse whose button is held down.
#pragma once

#include <chrono>
#include <optional>

#include "host/artwork/geometry.h"

namespace host {

struct Gesture {
  enum class Kind { Tap, SwipeUp, SwipeDown };
  Kind kind;
  // Where it began, in points.
  artwork::Point start;
};

class GestureRecognizer {
 public:
  // The time since any fixed moment. Points are in points of the screen.
  using Time = std::chrono::milliseconds;

  void press(artwork::Point at, Time now);
  void move(artwork::Point at);
  // Returns the gesture that ends here, if it is one.
  std::optional<Gesture> release(artwork::Point at, Time now);

 private:
  struct Press {
    artwork::Point start;
    Time since;
    // The largest distance from the start so far.
    double farthest;
  };
  std::optional<Press> press_;
};

}  // namespace host
