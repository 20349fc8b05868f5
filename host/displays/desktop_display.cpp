#include "host/displays/desktop_display.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

#include "host/desktop/desktop_area.h"
#include "host/desktop/output_painter.h"
#include "host/displays/wayland/wayland_desktop.h"
#include "host/displays/x11_desktop.h"
#include "host/home_screen/screen_drawing.h"
#include "host/wallpaper/drawn_surface.h"
#include "platform/linux/main_loop/run_loop.h"

namespace host {
namespace {

using platform::backend::RunLoop;

bool isWayland() {
  const char* name = std::getenv("WAYLAND_DISPLAY");
  return name != nullptr && *name != '\0';
}

}  // namespace

DesktopDisplay::DesktopDisplay(const DesktopOptions& options, std::function<void()> ended)
    : options_(options) {
  auto changed = [this] { update(); };
  if (isWayland()) {
    outputs_ = std::make_unique<wayland::WaylandDesktop>(options_, changed, std::move(ended));
  } else {
    outputs_ = std::make_unique<X11Desktop>(options_, changed);
  }
}

DesktopDisplay::~DesktopDisplay() {
  RunLoop::main().setDrawing(nullptr);
  RunLoop::main().clearAlarm(this);
}

std::vector<Output> DesktopDisplay::chosenOutputs() const {
  std::vector<Output> outputs = outputs_->outputs();
  std::erase_if(outputs, [this](const Output& output) { return !options_.isChosen(output.name); });
  return outputs;
}

platform::CGSize DesktopDisplay::size() const {
  const auto outputs = chosenOutputs();
  if (outputs.empty() || outputs.front().width == 0) return {1920, 1080};
  return {static_cast<platform::CGFloat>(outputs.front().width),
          static_cast<platform::CGFloat>(outputs.front().height)};
}

void DesktopDisplay::start(SpringBoard& springBoard) {
  springBoard_ = &springBoard;
  session_.emplace([this] { update(); });
  if (options_.pausesOnBattery) power_.emplace([this] { savePower(); });
  update();
  RunLoop::main().setDrawing([this](bool /*isAll*/) { draw(); });
  RunLoop::main().setNeedsDisplay();
}

void DesktopDisplay::setExceptedOutputs(std::vector<std::string> names) {
  options_.exceptedOutputs = std::move(names);
  outputs_->noteChoice();
  update();
  RunLoop::main().setNeedsDisplay();
}

void DesktopDisplay::setBackdrop(const BackdropOptions& backdrop) {
  options_.backdrop = backdrop;
  RunLoop::main().setNeedsDisplay();
}

void DesktopDisplay::noteLaunched() {
  isLaunched_ = true;
  RunLoop::main().setNeedsDisplay();
}

void DesktopDisplay::draw() {
  picture_.look(springBoard_->screen().root(), springBoard_->wallpaperNumber());
  const bool isEmpty = !picture_.exists();
  if (isEmpty && (picture_.isAwaited() || !isLaunched_)) return;
  outputs_->show(picture_);
  if (!arePainted_) update();
  savePower();
  constexpr std::chrono::milliseconds step{16};
  if (!outputs_->isFading()) return;
  RunLoop::main().setAlarm(this, RunLoop::Clock::now() + step,
                           [] { RunLoop::main().setNeedsPartialDisplay(); });
}

int DesktopDisplay::takeScreenshot() {
  // What is due must be drawn first, because drawing takes the picture's changes.
  draw();
  const auto outputs = chosenOutputs();
  if (outputs.empty()) return -1;
  const auto pixels = [&outputs](int length) {
    return static_cast<int>(std::lround(length * outputs.front().scale));
  };
  const cairo_rectangle_int_t all{0, 0, pixels(outputs.front().width),
                                  pixels(outputs.front().height)};
  const DrawnSurface surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, all.width, all.height));
  OutputPainter(options_).paint(picture_, areaOf(outputs.front(), outputs, options_), surface.get(),
                                platform::backend::Region(all));
  return pngOf(surface.get());
}

// A new wallpaper is shown first. Its picture stays while the wallpapers are hidden.
void DesktopDisplay::savePower() {
  const bool isSaving =
      power_ && power_->isSaving() && picture_.isOf(springBoard_->wallpaperNumber());
  if (isSaving != springBoard_->isSavingPower()) springBoard_->setSavingPower(isSaving);
}

void DesktopDisplay::update() {
  if (springBoard_ == nullptr) return;
  const auto outputs = chosenOutputs();
  const bool isUnseen =
      std::ranges::all_of(outputs, [](const Output& output) { return output.isUnseen; });
  std::vector<Output> all = outputs_->outputs();
  for (Output& output : all) {
    output.isWanted = options_.isWanted(output.name);
    output.isChosen = options_.isChosen(output.name);
  }
  arePainted_ = std::ranges::all_of(
      all, [](const Output& output) { return output.isPainted || !output.isChosen; });
  springBoard_->setOutputs(std::move(all));
  const bool isCovered = isUnseen || session_->isAway();
  if (isCovered != springBoard_->isCovered()) springBoard_->setCovered(isCovered);
}

}  // namespace host
