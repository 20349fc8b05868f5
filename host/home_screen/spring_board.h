// The home-screen application: the class "SpringBoard", and what a person or a program can make the
// device do. Main thread.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "host/home_screen/screen.h"
#include "host/options/host_options.h"
#include "platform/linux/views/view_class.h"

namespace host {

class SpringBoard {
 public:
  // Sets the device up and registers the host's classes. Once.
  explicit SpringBoard(const HostOptions& options);
  ~SpringBoard();
  SpringBoard(const SpringBoard&) = delete;
  SpringBoard& operator=(const SpringBoard&) = delete;

  // Sends the application "applicationDidFinishLaunching:". The libraries that change the host must
  // be loaded by then.
  void launch();
  // Tells whoever follows the wallpapers whether they are to be seen: a library starts its
  // wallpaper at launch without asking. To be called once what the launch has begun is done.
  void reportVisibility();

  void lock();
  // Unlocks, and leaves an app: both end on the home screen.
  void goHome();
  void openApp();
  void closeApp();
  // A display that is switched on shows the lock screen.
  void turnDisplay(bool on);
  void rotate(platform::UIInterfaceOrientation orientation);
  // Whether something that does not belong to the device hides the whole screen.
  void setCovered(bool isCovered);

  ScreenState state() const { return state_; }
  bool isCovered() const { return isCovered_; }
  platform::UIInterfaceOrientation orientation() const { return orientation_; }
  const HostOptions& options() const { return options_; }
  Screen& screen() { return *screen_; }

 private:
  struct Object;
  void finishLaunching();
  void show(ScreenState state);
  void keepTime();

  const HostOptions options_;
  std::unique_ptr<Object> object_;
  std::unique_ptr<Screen> screen_;
  ScreenState state_ = ScreenState::Home;
  bool isCovered_ = false;
  platform::UIInterfaceOrientation orientation_ = platform::UIInterfaceOrientation::Portrait;
};

}  // namespace host
