#include "host/home_screen/screen.h"

#include <initializer_list>
#include <utility>

#include "host/home_screen/wallpaper_controller.h"

namespace host {
namespace {

using artwork::DockEdge;
using platform::CGFloat;
using platform::CGRect;
using platform::CGSize;
using platform::UIInterfaceOrientation;

constexpr CGFloat uprightPhoneStatusBarHeight = 44;
constexpr CGFloat otherStatusBarHeight = 28;

constexpr platform::UIColor black{0, 0, 0, 1};

}  // namespace

Screen::Screen(CGSize size, Idiom idiom, bool hasChrome)
    : uprightSize_(size),
      idiom_(idiom),
      hasChrome_(hasChrome),
      root_(std::make_shared<platform::UIView>()),
      wallpapers_(std::make_shared<platform::UIView>()),
      icons_(std::make_shared<HomeIconsView>(idiom)),
      dock_(DockView::make(idiom)),
      lockScreen_(std::make_shared<LockScreenView>()),
      statusBar_(std::make_shared<StatusBarView>()),
      app_(std::make_shared<AppView>()),
      keyHelp_(std::make_shared<KeyHelpView>()) {
  root_->setBackgroundColor(black);
  keyHelp_->setHidden(true);
  const std::initializer_list<std::shared_ptr<platform::UIView>> backToFront = {
      wallpapers_, icons_, dock_, lockScreen_, app_, statusBar_, keyHelp_};
  for (const auto& view : backToFront) root_->addSubview(view);
}

void Screen::start() {
  WallpaperController::instance().start(wallpapers_);
  showTime();
  layOut();
}

bool Screen::isSideways() const {
  return orientation_ == UIInterfaceOrientation::LandscapeLeft ||
         orientation_ == UIInterfaceOrientation::LandscapeRight;
}

CGSize Screen::size() const {
  return isSideways() ? CGSize{uprightSize_.height, uprightSize_.width} : uprightSize_;
}

void Screen::turn(UIInterfaceOrientation orientation) {
  orientation_ = orientation;
  layOut();
}

void Screen::layOut() {
  const CGSize whole = size();
  const CGRect everything{0, 0, whole.width, whole.height};
  const bool dockStandsAtSide = isSideways() && idiom_ != Idiom::Pad;
  const CGFloat statusBarHeight =
      isSideways() || idiom_ == Idiom::Pad ? otherStatusBarHeight : uprightPhoneStatusBarHeight;
  for (const auto& view : std::initializer_list<std::shared_ptr<platform::UIView>>{
           root_, wallpapers_, lockScreen_, app_, keyHelp_}) {
    view->setFrame(everything);
  }
  WallpaperController::instance().layOut(whole);
  statusBar_->setFrame({0, 0, whole.width, statusBarHeight});
  dock_->layOut(whole, dockStandsAtSide ? DockEdge::Right : DockEdge::Bottom);
  const CGRect dock = dock_->frame();
  const CGFloat right = dockStandsAtSide ? dock.x : whole.width;
  const CGFloat bottom = dockStandsAtSide ? whole.height : dock.y;
  icons_->setFrame({0, statusBarHeight, right, bottom - statusBarHeight});
}

void Screen::show(ScreenState state, bool isCovered) {
  state_ = state;
  const bool isHome = state == ScreenState::Home;
  const bool isLocked = state == ScreenState::Locked;
  icons_->setHidden(!hasChrome_ || !isHome);
  dock_->setHidden(!hasChrome_ || !isHome);
  lockScreen_->setHidden(!hasChrome_ || !isLocked);
  statusBar_->setHidden(!hasChrome_ || state == ScreenState::Off);
  app_->setHidden(!hasChrome_ || state != ScreenState::App);
  WallpaperController::instance().setVisibility({isLocked && !isCovered, isHome && !isCovered});
  adaptStatusBar();
}

bool Screen::followWallpaper(double scale) {
  if (!hasChrome_) return false;
  auto seen = WallpaperController::instance().follow(wallpaper_, scale);
  if (!seen || seen == behind_) return false;
  behind_ = std::move(seen);
  icons_->adaptTo(*behind_);
  lockScreen_->adaptTo(*behind_);
  dock_->setGlimpse(behind_);
  adaptStatusBar();
  return true;
}

// An app has a dark top.
void Screen::adaptStatusBar() {
  const CGRect area = statusBar_->frame();
  const bool isOnWallpaper = behind_ && state_ != ScreenState::App;
  const double brightness =
      isOnWallpaper ? behind_->brightness({area.x, area.y, area.width, area.height}) : 0;
  statusBar_->setLook(state_ != ScreenState::Locked, artwork::inkOn(brightness));
}

void Screen::showTime() {
  const TimeOfDay time = timeOfDay();
  statusBar_->setTime(time);
  lockScreen_->setTime(time);
}

platform::backend::Region Screen::takeRedrawnPart(double scale) {
  platform::backend::Region part = statusBar_->takeRedrawnPart(scale);
  part.add(lockScreen_->takeRedrawnPart(scale));
  return part;
}

void Screen::showKeyHelp(bool isShown) {
  if (isShown != showsKeyHelp()) keyHelp_->setHidden(!isShown);
}

const artwork::App* Screen::appAt(artwork::Point point) const {
  const artwork::App* app = icons_->appAt(point);
  return app == nullptr ? dock_->appAt(point) : app;
}

}  // namespace host
