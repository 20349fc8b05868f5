#include "host/displays/desktop_display.h"

namespace host {

DesktopDisplay::DesktopDisplay(SpringBoard& springBoard)
    : springBoard_(springBoard),
      window_(springBoard),
      cover_(window_.number(), [this] { update(); }),
      session_([this] { update(); }) {
  update();
}

void DesktopDisplay::update() {
  springBoard_.setCovered(cover_.isCovered() || session_.isAway());
}

}  // namespace host
