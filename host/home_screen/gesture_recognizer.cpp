#include "host/home_screen/gesture_recognizer.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace host {
namespace {

// A finger does not lie still.
constexpr double maxTapDistance = 10;
constexpr std::chrono::milliseconds maxTapTime{700};

// A swipe is long, or short and fast.
constexpr double minSwipe = 70;
constexpr double minFlick = 25;
constexpr std::chrono::milliseconds maxFlickTime{250};

}  // namespace

void GestureRecognizer::press(artwork::Point at, Time now) {
  press_ = {at, now, 0};
}

void GestureRecognizer::move(artwork::Point at) {
  if (!press_) return;
  const double distance = std::hypot(at.x - press_->start.x, at.y - press_->start.y);
  press_->farthest = std::max(press_->farthest, distance);
}

std::optional<Gesture> GestureRecognizer::release(artwork::Point at, Time now) {
  move(at);
  const auto press = std::exchange(press_, std::nullopt);
  if (!press) return std::nullopt;
  const Time span = now - press->since;
  if (press->farthest <= maxTapDistance) {
    if (span > maxTapTime) return std::nullopt;
    return Gesture{Gesture::Kind::Tap, press->start};
  }
  const double down = at.y - press->start.y;
  const double length = std::abs(down);
  const bool isFarEnough = length >= (span <= maxFlickTime ? minFlick : minSwipe);
  if (!isFarEnough || length < std::abs(at.x - press->start.x)) return std::nullopt;
  return Gesture{down < 0 ? Gesture::Kind::SwipeUp : Gesture::Kind::SwipeDown, press->start};
}

}  // namespace host
