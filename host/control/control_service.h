// Serves the methods of control_names.h on the bus. Main thread.
#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

#include <sdbus-c++/sdbus-c++.h>

#include "host/home_screen/spring_board.h"
#include "host/wallpaper/drawn_surface.h"

namespace host {

class ControlService {
 public:
  // What the display does for clients.
  struct DisplayActions {
    // Returns an image surface with a picture of the screen, or nullptr if there is no screen.
    std::function<DrawnSurface()> draw;
    // Takes the names of the outputs that do not show the wallpaper. Empty if there are no outputs.
    std::function<void(std::vector<std::string>)> setExceptedOutputs;
    // Takes what is shown beside the wallpaper's picture.
    std::function<void(const BackdropOptions&)> setBackdrop;
  };

  // Requires an open bus (platform::backend::Bus). springBoard must outlive this object. Throws
  // sdbus::Error if another home screen is running on the bus.
  ControlService(SpringBoard& springBoard, DisplayActions display);

  // Takes the home screen's name on the bus, which tells clients that it has launched. Throws
  // sdbus::Error if another home screen has taken it since.
  void announce();

  // Performs the calls that wait for something. They turn the run loop, so call this between its
  // turns.
  void runJobs();

 private:
  void registerStates();
  void registerOtherMethods();
  sdbus::UnixFd screenshot();
  std::tuple<sdbus::UnixFd, std::int32_t, std::int32_t> pixels();
  void addJob(std::function<void()> job);
  bool refusesOnDesktop(const sdbus::Result<>& result) const;
  void whenSettled(sdbus::Result<>&& result);
  void setExceptedOutputs(sdbus::Result<>&& result, std::vector<std::string> names);
  void setBackdrop(sdbus::Result<>&& result, const std::string& text);
  void setPaused(sdbus::Result<>&& result, bool isPaused);
  void rotate(sdbus::Result<>&& result, const std::string& name);
  // Both numbers are in nanoseconds.
  void advance(sdbus::Result<>&& result, std::int64_t nanoseconds, std::int64_t timeout);

  SpringBoard& springBoard_;
  const DisplayActions display_;
  std::unique_ptr<sdbus::IObject> object_;
  std::deque<std::function<void()>> jobs_;
};

}  // namespace host
