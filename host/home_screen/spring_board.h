// The home-screen application: the class "SpringBoard", and the actions of a user or a program.
// Main thread.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "host/home_screen/output.h"
#include "host/home_screen/screen.h"
#include "host/options/host_options.h"

namespace host {

class SpringBoard {
 public:
  // Sets the device up and registers the host's classes. Make one object per process.
  explicit SpringBoard(const HostOptions& options);
  ~SpringBoard();
  SpringBoard(const SpringBoard&) = delete;
  SpringBoard& operator=(const SpringBoard&) = delete;

  // Sends the application "applicationDidFinishLaunching:". Load the libraries that change the host
  // before that.
  void launch();
  // Notifies the observers of each wallpaper of its visibility, because a library may start a
  // wallpaper at launch that is not shown. Call it once the work that launch has started is done.
  void reportVisibility();

  // Goes to the lock screen, unless the display is off.
  void lock();
  // Goes to the home screen, from the lock screen or from an app. Switches the display on.
  void goHome();
  // Opens an app from any screen, also from the lock screen. Switches the display on. app must
  // outlive this object.
  void openApp(const artwork::App& app = artwork::usualApp());
  // Goes to the home screen if the app is open.
  void closeApp();
  // Switches the display on or off. It comes on with the lock screen.
  void turnDisplay(bool on);
  void rotate(platform::UIInterfaceOrientation orientation);
  // Tells the home screen that something outside of it covers all of it, or no longer does. The
  // wallpapers are hidden then, and the clock stands still.
  void setCovered(bool isCovered);
  // Hides the wallpapers of a desktop, which keeps what it has painted, until this is called again
  // with false.
  void setPaused(bool isPaused);
  // Hides the wallpapers of a desktop likewise, to save power.
  void setSavingPower(bool isSavingPower);
  // Tells that another wallpaper has been chosen.
  void noteNewWallpaper();
  // Returns how often that has been.
  unsigned wallpaperNumber() const { return wallpaperNumber_; }
  // Replaces what a phone shows beside the wallpaper's picture.
  void setBackdrop(const BackdropOptions& backdrop);
  // Sets the name of what the wallpaper shows, for the window's title; "" if there is none.
  void setWallpaperName(std::string name);
  const std::string& wallpaperName() const { return wallpaperName_; }
  // Records the outputs of a desktop, for the status report.
  void setOutputs(std::vector<Output> outputs) { outputs_ = std::move(outputs); }

  ScreenState state() const { return state_; }
  bool isCovered() const { return isCovered_; }
  bool isPaused() const { return isPaused_; }
  bool isSavingPower() const { return isSavingPower_; }
  const std::vector<Output>& outputs() const { return outputs_; }
  platform::UIInterfaceOrientation orientation() const { return screen_->orientation(); }
  const HostOptions& options() const { return options_; }
  Screen& screen() { return *screen_; }

 private:
  struct Object;
  void finishLaunching();
  void show(ScreenState state);
  bool hidesWallpapers() const { return isCovered_ || isPaused_ || isSavingPower_; }
  void keepTime();
  void showWallpaperChoice();

  const HostOptions options_;
  std::unique_ptr<Object> object_;
  std::unique_ptr<Screen> screen_;
  ScreenState state_ = ScreenState::Home;
  bool isCovered_ = false;
  bool isPaused_ = false;
  bool isSavingPower_ = false;
  unsigned wallpaperNumber_ = 0;
  BackdropOptions backdrop_;
  std::string wallpaperName_;
  std::vector<Output> outputs_;
};

}  // namespace host
