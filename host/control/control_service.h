// Remote control of the home screen: its methods on the bus. Main thread.
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
  // Needs an open bus. Throws sdbus::Error if another home screen serves there already.
  explicit ControlService(SpringBoard& springBoard);

  // Makes the home screen known on the bus: from now on it counts as launched.
  void announce();

  // Does what was asked for and takes time. To be called between turns of the run loop.
  void runJobs();

 private:
  void registerStates();
  void registerQuestions();
  sdbus::UnixFd screenshot();
  void addJob(std::function<void()> job);
  void whenSettled(sdbus::Result<>&& result);
  void rotate(sdbus::Result<>&& result, const std::string& name);
  // Both in nanoseconds; gives up once the timeout has passed.
  void advance(sdbus::Result<>&& result, std::int64_t nanoseconds, std::int64_t timeout);

  SpringBoard& springBoard_;
  std::unique_ptr<sdbus::IObject> object_;
  std::deque<std::function<void()>> jobs_;
};

}  // namespace host
