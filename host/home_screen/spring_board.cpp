#include "host/home_screen/spring_board.h"

#include "host/home_screen/wallpaper_controller.h"
#include "platform/linux/device.h"
#include "platform/linux/main_loop/display_clock.h"
#include "platform/linux/main_loop/run_loop.h"
#include "platform/linux/views/notification_center.h"
#include "platform/linux/views/objc_runtime.h"

namespace host {
namespace {

using platform::id;
using platform::SEL;
using platform::UIInterfaceOrientation;

constexpr platform::CGFloat phoneDockHeight = 96;
constexpr platform::CGFloat padDockHeight = 110;

bool hasChrome(const HostOptions& options) {
  return options.display != DisplayKind::Desktop;
}

platform::CGFloat dockHeight(const HostOptions& options) {
  if (!hasChrome(options)) return 0;
  return options.idiom == Idiom::Pad ? padDockHeight : phoneDockHeight;
}

}  // namespace

struct SpringBoard::Object : objc_object {
  explicit Object(SpringBoard& owner) : springBoard(owner) {}
  SpringBoard& springBoard;

  static void applicationDidFinishLaunching(id self, SEL /*selector*/, id /*application*/) {
    static_cast<Object*>(self)->springBoard.finishLaunching();
  }
};

SpringBoard::SpringBoard(const HostOptions& options)
    : options_(options),
      object_(std::make_unique<Object>(*this)),
      backdrop_(options.desktop.backdrop) {
  const auto width = static_cast<platform::CGFloat>(options.width);
  const auto height = static_cast<platform::CGFloat>(options.height);
  platform::backend::setMainScreenBounds({0, 0, width, height});
  platform::backend::setUserInterfaceIdiom(options.idiom);
  auto& clock = platform::backend::DisplayClock::main();
  clock.setRefreshRate(options.refreshRate);
  if (options.hasManualClock) clock.setManual();

  platform::Class cls = platform::backend::registerClass("SpringBoard", nullptr);
  platform::backend::addMethod(
      cls, "applicationDidFinishLaunching:", Object::applicationDidFinishLaunching);
  object_->isa = cls;
  DockView::registerClass(dockHeight(options));
  WallpaperController::registerClasses();
  screen_ =
      std::make_unique<Screen>(platform::CGSize{width, height}, options.idiom, hasChrome(options));
  showWallpaperChoice();
}

SpringBoard::~SpringBoard() = default;

void SpringBoard::launch() {
  platform::objc_msgSend<void, id>(object_.get(), "applicationDidFinishLaunching:", object_.get());
}

void SpringBoard::reportVisibility() {
  WallpaperController::instance().reportVisibility();
}

void SpringBoard::finishLaunching() {
  screen_->start();
  show(options_.startsLocked ? ScreenState::Locked : ScreenState::Home);
}

void SpringBoard::show(ScreenState state) {
  state_ = state;
  screen_->showTime();
  screen_->show(state, hidesWallpapers());
  keepTime();
}

// A window updates its clock every minute while a clock is visible. Otherwise there is no alarm, so
// that the process can sleep.
void SpringBoard::keepTime() {
  if (options_.display != DisplayKind::Window) return;
  auto& runLoop = platform::backend::RunLoop::main();
  const bool showsClock = !isCovered_ && state_ != ScreenState::Off;
  runLoop.clearAlarm(this);
  if (!showsClock) return;
  runLoop.setAlarm(this, platform::backend::RunLoop::Clock::now() + untilNextMinute(), [this] {
    screen_->showTime();
    keepTime();
  });
}

void SpringBoard::lock() {
  if (state_ != ScreenState::Off) show(ScreenState::Locked);
}

void SpringBoard::goHome() {
  show(ScreenState::Home);
}

void SpringBoard::openApp(const artwork::App& app) {
  screen_->showApp(app);
  show(ScreenState::App);
}

void SpringBoard::closeApp() {
  if (state_ == ScreenState::App) show(ScreenState::Home);
}

void SpringBoard::turnDisplay(bool on) {
  if (!on) show(ScreenState::Off);
  if (on && state_ == ScreenState::Off) show(ScreenState::Locked);
}

void SpringBoard::setCovered(bool isCovered) {
  isCovered_ = isCovered;
  show(state_);
}

void SpringBoard::setWallpaperName(std::string name) {
  wallpaperName_ = std::move(name);
  platform::backend::RunLoop::main().setNeedsPartialDisplay();
}

void SpringBoard::noteNewWallpaper() {
  ++wallpaperNumber_;
  showWallpaperChoice();
}

void SpringBoard::setBackdrop(const BackdropOptions& backdrop) {
  backdrop_ = backdrop;
  showWallpaperChoice();
}

void SpringBoard::showWallpaperChoice() {
  screen_->setWallpaper({wallpaperNumber_, backdrop_});
  platform::backend::RunLoop::main().setNeedsDisplay();
}

void SpringBoard::setPaused(bool isPaused) {
  isPaused_ = isPaused;
  screen_->show(state_, hidesWallpapers());
}

void SpringBoard::setSavingPower(bool isSavingPower) {
  isSavingPower_ = isSavingPower;
  screen_->show(state_, hidesWallpapers());
}

void SpringBoard::rotate(UIInterfaceOrientation orientation) {
  if (orientation == screen_->orientation()) return;
  platform::backend::setStatusBarOrientation(orientation);
  screen_->turn(orientation);
  platform::backend::postNotification("UIDeviceOrientationDidChangeNotification");
}

}  // namespace host
