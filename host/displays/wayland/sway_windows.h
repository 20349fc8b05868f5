// Follows how windows use the outputs, on a compositor that speaks sway's IPC. Main thread.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "host/displays/wayland/sway_socket.h"
#include "host/displays/wayland/sway_tree.h"
#include "platform/linux/main_loop/run_loop.h"

namespace host::wayland {

class SwayWindows {
 public:
  // Calls changed when useOf may give another result.
  explicit SwayWindows(std::function<void()> changed);
  ~SwayWindows();
  SwayWindows(const SwayWindows&) = delete;
  SwayWindows& operator=(const SwayWindows&) = delete;

  // Returns false if the compositor does not speak the IPC, or no longer.
  bool isConnected() const { return socket_.isOpen(); }
  // Returns a use by no window if it is not known.
  OutputUse useOf(const std::string& output) const;

  // Asks the compositor again: soon, and once more when the windows have had time to move.
  void refresh();

 private:
  using Clock = platform::backend::RunLoop::Clock;

  void receive(std::uint32_t type, std::string_view text);
  void take(std::map<std::string, OutputUse> uses);
  void askAt(Clock::time_point moment);
  void ask();

  const std::function<void()> changed_;
  SwaySocket socket_;
  std::map<std::string, OutputUse> uses_;
  Clock::time_point askedAt_;
  Clock::time_point settledAt_;
};

}  // namespace host::wayland
