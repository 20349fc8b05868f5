// A short transition of a window from the screen that it showed last to another one. It is made of
// two pictures: the last one, and the one that is drawn now. Main thread.
#pragma once

#include <chrono>
#include <memory>
#include <optional>

#include <cairo.h>

#include "host/home_screen/screen.h"
#include "host/wallpaper/drawn_surface.h"
#include "platform/display_link.h"

namespace host {

// What a transition may lead to and from.
struct Scene {
  ScreenState state = ScreenState::Home;
  platform::UIInterfaceOrientation orientation = platform::UIInterfaceOrientation::Portrait;
  friend bool operator==(const Scene&, const Scene&) = default;
};

class ScreenTransition {
 public:
  using Duration = std::chrono::duration<double>;

  // duration: 0 makes no transitions.
  explicit ScreenTransition(Duration duration) : duration_(duration) {}
  ~ScreenTransition() { stop(); }
  ScreenTransition(const ScreenTransition&) = delete;
  ScreenTransition& operator=(const ScreenTransition&) = delete;

  // Call it before a scene is drawn. If it is another one than that of the last call, a transition
  // begins from what is shown, an image surface with the screen; nullptr if that is not known.
  // Until it is over, the run loop draws at every refresh of the display.
  void show(const Scene& scene, cairo_surface_t* shown);
  // Ends a transition, and takes the scene without one.
  void jumpTo(const Scene& scene);

  // Returns true while what compose draws is not what has been drawn.
  bool isRunning() const { return last_ != nullptr; }
  // Draws what is still to be seen of the last scene over the present one, which has just been
  // drawn on the surface. Does nothing if no transition is running, and ends it when its time is
  // over.
  void compose(cairo_surface_t* drawn);

 private:
  using Clock = std::chrono::steady_clock;
  enum class Kind { Fade, Open, Close, Turn };

  static Kind kindOf(const Scene& from, const Scene& to);
  void start(cairo_surface_t* shown);
  void stop();
  void drawLast(cairo_t* context, cairo_surface_t* drawn, double progress) const;

  const Duration duration_;
  std::optional<Scene> scene_;
  Kind kind_ = Kind::Fade;
  // By how many quarters the last picture is turned to the right to lie as it did on the device.
  int quarters_ = 0;
  DrawnSurface last_;
  Clock::time_point start_;
  std::shared_ptr<platform::CADisplayLink> link_;
};

}  // namespace host
