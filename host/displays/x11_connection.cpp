#include "host/displays/x11_connection.h"

#include <chrono>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <thread>

#include <X11/Xlib.h>

namespace host {

Display* openX11Display() {
  constexpr int maxTries = 50;
  constexpr std::chrono::milliseconds pause{100};
  const char* name = std::getenv("DISPLAY");
  if (name == nullptr || *name == '\0') throw std::runtime_error("no X server: DISPLAY is not set");
  for (int tries = 0; tries < maxTries; ++tries) {
    if (Display* display = XOpenDisplay(nullptr)) return display;
    std::this_thread::sleep_for(pause);
  }
  throw std::runtime_error(std::string("cannot connect to the X server ") + name);
}

void ignoreX11Errors() {
  XSetErrorHandler([](Display*, XErrorEvent*) { return 0; });
}

}  // namespace host
