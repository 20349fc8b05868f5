// The display's refresh clock. It follows real time, or is advanced manually, refresh by refresh,
// at exact multiples of the refresh period. Main thread, except for remove, which any thread may
// call.
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
    // Returns how many of the next refreshes may pass without a call.
    virtual int skippable() const = 0;
    // Makes that 0.
    virtual void endSkipping() = 0;
    // Called after this number of refreshes, of which at least all but the last were skippable.
    // Must not throw.
    virtual void refresh(int passed) = 0;
  };

  static DisplayClock& main();

  // Sets the refreshes per second, which are 60 at first. Requires at least 1, and no links yet.
  void setRefreshRate(int hertz);
  int refreshRate() const { return hertz_; }
  // Makes the clock manual: from then on only advance moves it.
  void setManual();
  bool isManual() const { return manual_; }

  // Calls the link at every refresh and retains it until it is removed. Refreshes are skipped only
  // in real time and for a link that is the only one.
  void add(std::shared_ptr<Link> link);
  // Does nothing if the link has not been added.
  void remove(const Link& link);

  // Returns when the next refresh that is not skipped is due, or nothing if there are no links or
  // the clock is manual.
  std::optional<TimePoint> nextRefresh() const;
  // Calls the links once if at least one refresh is due; missed refreshes are skipped. Returns true
  // if the links were called.
  bool refreshIfDue(TimePoint now);

  // Calls the link if refreshes have been skipped since its last call, so that it knows of them.
  // Call it before, and endSkipping after, any work that may change what the link does.
  void catchUp(TimePoint now);
  void endSkipping();

  // Returns the time for which the manual clock has been advanced.
  std::chrono::nanoseconds manualTime() const { return manualTime_; }
  // Advances the manual clock and calls afterEach after each refresh. If afterEach returns false,
  // stops at that refresh and returns false.
  bool advance(std::chrono::nanoseconds span, const std::function<bool()>& afterEach);

 private:
  DisplayClock() = default;
  std::chrono::nanoseconds timeOfRefresh(std::int64_t index) const;
  std::int64_t refreshesUntil(TimePoint now) const;
  void refreshLinks(int passed);
  int skippable() const;
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
