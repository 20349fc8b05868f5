// The tree of views on the screen, laid out for the device and its orientation. Main thread.
#pragma once

#include <memory>

#include "host/home_screen/chrome_views.h"
#include "host/home_screen/dock_view.h"
#include "host/home_screen/wallpaper_view.h"
#include "host/options/idiom.h"
#include "platform/device.h"
#include "platform/linux/views/region.h"
#include "platform/view.h"

namespace host {

enum class ScreenState { Locked, Home, App, Off };

class Screen {
 public:
  // size: the upright device in points. Without chrome only the wallpapers are shown.
  Screen(platform::CGSize size, Idiom idiom, bool hasChrome);

  // Makes the wallpapers and lays everything out. Call it once, at launch.
  void start();
  // Shows the views of this state. The wallpapers of a covered screen are hidden in every state.
  void show(ScreenState state, bool isCovered);
  void turn(platform::UIInterfaceOrientation orientation);
  // Chooses how the wallpaper is shown. Without chrome it has no effect.
  void setWallpaper(const WallpaperView::Choice& choice) { wallpaper_ = choice; }
  // Adapts what is around and above the animation to it. Call it before the screen is drawn.
  // Returns true if more than the next frame must be drawn. scale: pixels per point.
  bool followWallpaper(double scale);
  // Updates the clocks.
  void showTime();
  // Returns the pixels in which the clocks have changed since the last call. scale: pixels per
  // point.
  platform::backend::Region takeRedrawnPart(double scale);
  // Shows this app in the state App.
  void showApp(const artwork::App& app) { app_->show(app); }
  void showKeyHelp(bool isShown);
  bool showsKeyHelp() const { return !keyHelp_->hidden(); }

  // Returns the app whose icon is at this point of the home screen, or nullptr.
  const artwork::App* appAt(artwork::Point point) const;

  platform::UIInterfaceOrientation orientation() const { return orientation_; }
  // Returns the size in points in the current orientation.
  platform::CGSize size() const;
  platform::UIView& root() const { return *root_; }

 private:
  bool isSideways() const;
  void layOut();
  void adaptStatusBar();

  const platform::CGSize uprightSize_;
  const Idiom idiom_;
  const bool hasChrome_;
  platform::UIInterfaceOrientation orientation_ = platform::UIInterfaceOrientation::Portrait;
  ScreenState state_ = ScreenState::Home;
  WallpaperView::Choice wallpaper_;
  // What is behind the chrome, if that has been seen.
  std::shared_ptr<const Glimpse> behind_;
  std::shared_ptr<platform::UIView> root_;
  std::shared_ptr<platform::UIView> wallpapers_;
  std::shared_ptr<HomeIconsView> icons_;
  std::shared_ptr<DockView> dock_;
  std::shared_ptr<LockScreenView> lockScreen_;
  std::shared_ptr<StatusBarView> statusBar_;
  std::shared_ptr<AppView> app_;
  std::shared_ptr<KeyHelpView> keyHelp_;
};

}  // namespace host
