#include "host/home_screen/gesture_actions.h"

#include "host/artwork/home_bar.h"

namespace host {
namespace {

using Kind = Gesture::Kind;

// The edges of the screen at which swipes begin, as a part of its height and in points.
constexpr double topShare = 0.125;
constexpr double bottomEdge = 36;
// How far beside the home bar a tap may be.
constexpr double barMargin = 14;

void leaveApp(const Gesture& gesture, SpringBoard& springBoard) {
  const platform::CGSize size = springBoard.screen().size();
  const artwork::Size screen{size.width, size.height};
  const bool isOnBar =
      gesture.kind == Kind::Tap && artwork::homeBarOf(screen).contains(gesture.start, barMargin);
  const bool isFromBottom =
      gesture.kind == Kind::SwipeUp && gesture.start.y >= screen.height - bottomEdge;
  if (isOnBar || isFromBottom) springBoard.closeApp();
}

void lockFromTop(const Gesture& gesture, SpringBoard& springBoard) {
  const bool isFromTop = gesture.start.y <= springBoard.screen().size().height * topShare;
  if (gesture.kind == Kind::SwipeDown && isFromTop) springBoard.lock();
}

void openApp(const Gesture& gesture, SpringBoard& springBoard) {
  if (gesture.kind != Kind::Tap) return;
  if (const artwork::App* app = springBoard.screen().appAt(gesture.start)) {
    springBoard.openApp(*app);
  }
}

}  // namespace

void perform(const Gesture& gesture, SpringBoard& springBoard) {
  Screen& screen = springBoard.screen();
  if (screen.showsKeyHelp()) return screen.showKeyHelp(false);
  switch (springBoard.state()) {
    case ScreenState::Off:
      return springBoard.turnDisplay(true);
    case ScreenState::Locked:
      if (gesture.kind == Kind::SwipeUp) springBoard.goHome();
      return;
    case ScreenState::Home:
      openApp(gesture, springBoard);
      return lockFromTop(gesture, springBoard);
    case ScreenState::App:
      leaveApp(gesture, springBoard);
      return lockFromTop(gesture, springBoard);
  }
}

}  // namespace host
