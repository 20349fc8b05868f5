// Finds out if power is to be saved: the machine runs on battery, or the user has chosen the power
// profile "power-saver". Main thread.
#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <optional>

#include "host/displays/watched_bus.h"

namespace host {

class PowerWatch {
 public:
  // Listens to UPower and power-profiles-daemon on the system bus, also if they start later.
  // isSaving is false until they have answered, and without them. Calls changed when it has
  // changed.
  explicit PowerWatch(std::function<void()> changed);
  PowerWatch(const PowerWatch&) = delete;
  PowerWatch& operator=(const PowerWatch&) = delete;

  bool isSaving() const;

 private:
  static constexpr std::size_t serviceCount = 3;

  void watch(std::size_t service);
  void read(std::size_t service, sdbus::IProxy& proxy);
  void note(std::size_t service, bool asksToSave);

  const std::function<void()> changed_;
  std::array<bool, serviceCount> asksToSave_{};
  std::optional<WatchedBus> bus_;
};

}  // namespace host
