#include "host/displays/window_keys.h"

#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>

#include <SDL2/SDL_keycode.h>
#include <fcntl.h>

#include "host/home_screen/screen_drawing.h"
#include "platform/linux/files/file_contents.h"
#include "platform/linux/main_loop/run_loop.h"

namespace host {
namespace {

using platform::UIInterfaceOrientation;
using platform::backend::RunLoop;

void saveScreenshot(SpringBoard& springBoard) {
  std::string name;
  for (int count = 1; name.empty() || std::filesystem::exists(name); ++count) {
    name = "springboard-" + std::to_string(count) + ".png";
  }
  const DrawnSurface screen =
      drawnScreen(springBoard.screen(), springBoard.options().scaleOfScreenshots());
  const platform::backend::FileDescriptor png(pngOf(screen.get()));
  const platform::backend::FileDescriptor file =
      platform::backend::createFile(AT_FDCWD, std::filesystem::absolute(name));
  if (png && file && platform::backend::copyFile(png, file)) {
    std::printf("%s\n", name.c_str());
    std::fflush(stdout);
  } else {
    std::fprintf(stderr, "springboard: cannot write %s here\n", name.c_str());
  }
}

void toggleLock(SpringBoard& springBoard) {
  if (springBoard.state() == ScreenState::Locked) {
    springBoard.goHome();
  } else {
    springBoard.lock();
  }
}

void toggleApp(SpringBoard& springBoard) {
  if (springBoard.state() == ScreenState::App) {
    springBoard.closeApp();
  } else {
    springBoard.openApp();
  }
}

void toggleKeyHelp(SpringBoard& springBoard) {
  Screen& screen = springBoard.screen();
  screen.showKeyHelp(!screen.showsKeyHelp());
}

// Returns the key's character. On a layout without Latin letters, returns the letter that other
// layouts have there.
SDL_Keycode latinKey(const SDL_Keysym& key) {
  constexpr SDL_Keycode lastOfAscii = 0x7f;
  const bool isForeign = key.sym > lastOfAscii && (key.sym & SDLK_SCANCODE_MASK) == 0;
  const bool isLetter = key.scancode >= SDL_SCANCODE_A && key.scancode <= SDL_SCANCODE_Z;
  return isForeign && isLetter ? SDLK_a + (key.scancode - SDL_SCANCODE_A) : key.sym;
}

}  // namespace

void handleKey(const SDL_Keysym& key, SpringBoard& springBoard) {
  switch (latinKey(key)) {
    case SDLK_l:
      return toggleLock(springBoard);
    case SDLK_h:
      return springBoard.goHome();
    case SDLK_a:
      return toggleApp(springBoard);
    case SDLK_LEFT:
      return springBoard.rotate(UIInterfaceOrientation::LandscapeRight);
    case SDLK_RIGHT:
      return springBoard.rotate(UIInterfaceOrientation::LandscapeLeft);
    case SDLK_UP:
      return springBoard.rotate(UIInterfaceOrientation::Portrait);
    case SDLK_DOWN:
      return springBoard.rotate(UIInterfaceOrientation::PortraitUpsideDown);
    case SDLK_s:
      return saveScreenshot(springBoard);
    case SDLK_p:
      return springBoard.turnDisplay(springBoard.state() == ScreenState::Off);
    case SDLK_q:
      return RunLoop::main().stop();
    case SDLK_F1:
      return toggleKeyHelp(springBoard);
    case SDLK_ESCAPE:
      return springBoard.screen().showKeyHelp(false);
    default:
      return;
  }
}

void handleText(const char* text, SpringBoard& springBoard) {
  // A US keyboard has both characters on one key.
  const std::string_view typed(text);
  if (typed == "?" || typed == "/") toggleKeyHelp(springBoard);
}

}  // namespace host
