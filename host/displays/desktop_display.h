// Shows the wallpaper on the desktop, behind all windows, on every output. It counts as covered
// while no output can be seen or the session is locked or inactive. Main thread.
#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "host/desktop/desktop_outputs.h"
#include "host/displays/power_watch.h"
#include "host/displays/session_watch.h"
#include "host/home_screen/spring_board.h"
#include "host/options/desktop_options.h"
#include "host/wallpaper/drawn_surface.h"
#include "host/wallpaper/wallpaper_picture.h"

namespace host {

class DesktopDisplay {
 public:
  // Connects to the Wayland compositor if WAYLAND_DISPLAY is set, otherwise to the X server. ended
  // is called if that is lost later. Throws std::runtime_error, with the reason, if neither can
  // show a wallpaper.
  DesktopDisplay(const DesktopOptions& options, std::function<void()> ended);
  ~DesktopDisplay();
  DesktopDisplay(const DesktopDisplay&) = delete;
  DesktopDisplay& operator=(const DesktopDisplay&) = delete;

  // Returns the size of the first output that shows the wallpaper, or of a usual one if there is
  // none at the moment.
  platform::CGSize size() const;

  // Returns an image surface with the first output as it is shown, without windows; nullptr if
  // there is no output.
  DrawnSurface drawnOutput();

  // Call it when the libraries have launched: only then is a desktop without a wallpaper painted.
  void noteLaunched();

  // Replace options.
  void setExceptedOutputs(std::vector<std::string> names);
  void setBackdrop(const BackdropOptions& backdrop);

  // Makes the run loop draw the wallpaper. springBoard must outlive this object. Call it once.
  void start(SpringBoard& springBoard);

 private:
  std::vector<Output> chosenOutputs() const;
  void draw();
  void update();
  void savePower();

  DesktopOptions options_;
  SpringBoard* springBoard_ = nullptr;
  WallpaperPicture picture_;
  bool isLaunched_ = false;
  // True if all outputs that were known lately show the wallpaper.
  bool arePainted_ = false;
  std::unique_ptr<DesktopOutputs> outputs_;
  std::optional<SessionWatch> session_;
  std::optional<PowerWatch> power_;
};

}  // namespace host
