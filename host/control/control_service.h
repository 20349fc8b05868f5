// Serves the methods of control_names.h on the bus. Main thread.
#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <string>

#include <sdbus-c++/sdbus-c++.h>

#include "host/home_screen/spring_board.h"

namespace host {

class ControlService {
 public:
  // Returns a descriptor, owned by the caller, of a PNG file with an image of the screen, or -1 if
  // it cannot be made.
  using TakeScreenshot = std::function<int()>;

  // Requires an open bus (platform::backend::Bus). springBoard must outlive this object. Throws
  // sdbus::Error if another home screen is running on the bus.
  ControlService(SpringBoard& springBoard, TakeScreenshot takeScreenshot);

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
  void addJob(std::function<void()> job);
  bool refusesOnDesktop(const sdbus::Result<>& result) const;
  void whenSettled(sdbus::Result<>&& result);
  void setPaused(sdbus::Result<>&& result, bool isPaused);
  void rotate(sdbus::Result<>&& result, const std::string& name);
  // Both numbers are in nanoseconds.
  void advance(sdbus::Result<>&& result, std::int64_t nanoseconds, std::int64_t timeout);

  SpringBoard& springBoard_;
  const TakeScreenshot takeScreenshot_;
  std::unique_ptr<sdbus::IObject> object_;
  std::deque<std::function<void()>> jobs_;
};

}  // namespace host
