// The display's refresh. It follows real time, or is driven by hand, refresh by refresh, at exact
// multiples of the refresh period. Main thread, but for remove, which any thread may call.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace platform::backend {

class DisplayClock {
 public:
  using TimePoint = std::chrono::steady_clock::time_point;

  class Link {
   public:
    virtual ~Link() = default;
    virtual void refresh() = 0;
  };

  static DisplayClock& main();

  void setRefreshRate(int hertz);
  int refreshRate() const { return hertz_; }
  // From now on only advance moves the clock.
  void setManual();
  bool isManual() const { return manual_; }

  // Retains the link.
  void add(std::shared_ptr<Link> link);
  void remove(const Link& link);

  // When the next refresh must be handled; nothing while nobody waits for one.
  std::optional<TimePoint> nextRefresh() const;
  // Handles one refresh if its moment has come, and tells so; refreshes slept through are left out.
  bool refreshIfDue(TimePoint now);

  // The time since the clock was made manual.
  std::chrono::nanoseconds manualTime() const { return manualTime_; }
  // Moves the manual clock; calls afterEach behind every refresh on the way, which may end it
  // there: false if it did.
  bool advance(std::chrono::nanoseconds span, const std::function<bool()>& afterEach);

 private:
  DisplayClock() = default;
  std::chrono::nanoseconds timeOfRefresh(std::int64_t index) const;
  std::int64_t refreshesUntil(TimePoint now) const;
  void refreshLinks();
  bool hasLinks() const;

  mutable std::mutex mutex_;
  std::vector<std::shared_ptr<Link>> links_;
  int hertz_ = 60;
  bool manual_ = false;
  TimePoint start_ = std::chrono::steady_clock::now();
  std::int64_t refreshes_ = 0;
  std::chrono::nanoseconds manualTime_{0};
};

}  // namespace platform::backend
