// The main thread's run loop, which handles the main queue, file descriptors, alarms, display
// refreshes and drawing, and sleeps while there is nothing to do. Main thread, except for perform,
// setNeedsDisplay, setNeedsPartialDisplay, stop, isStopped and wake, which work on any thread. The
// functions that it calls must not throw.
#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace platform::backend {

class RunLoop {
 public:
  using Clock = std::chrono::steady_clock;
  using Block = std::function<void()>;

  static RunLoop& main();

  // Queues a block for the main thread.
  void perform(Block block);
  // Runs queued blocks, including those that they queue, until none is left. Returns true if there
  // were any. Not within a queued block.
  bool runMainQueue();

  // Handles pending events of a file descriptor without waiting. Returns false if there were none,
  // or if it has handled all and they only confirm a drawing.
  using Source = std::function<bool()>;
  // Calls the handler whenever the descriptor is readable and after any other work except
  // refreshes, because libraries read ahead. Replaces an earlier handler. Does not own the
  // descriptor, which must be removed before it is closed.
  void addSource(int fileDescriptor, Source handler);
  void removeSource(int fileDescriptor);

  // Calls the block once, at the given time or later. Each owner has one alarm: this replaces it.
  void setAlarm(const void* owner, Clock::time_point moment, Block block);
  // Call it before the owner is destroyed.
  void clearAlarm(const void* owner);

  // Draws the screen: all of it, or only what has changed.
  using Draw = std::function<void(bool isAll)>;
  // Sets the function that a turn calls, at most once, if the screen needs display.
  void setDrawing(Draw draw);
  // Requests that all of the screen is drawn.
  void setNeedsDisplay();
  // Requests that the changed images are drawn.
  void setNeedsPartialDisplay();

  // Asks the loop's caller, through isStopped, to make no more turns, and ends a turn's sleep.
  void stop();
  bool isStopped() const { return stopped_; }
  // Ends a turn's sleep.
  void wake() const;
  // Handles what is due without sleeping. Returns true if anything other than a refresh was
  // handled.
  bool handleDue();
  // Makes one turn: handles what is due. If nothing is and the loop is not stopped, sleeps until
  // something happens or until the limit.
  void turn(std::optional<Clock::time_point> limit);

 private:
  RunLoop();
  std::vector<Block> takeQueue();
  bool handleWhatMayBeDue();
  bool handleOtherWork();
  bool beginSleep();
  bool handleSources();
  bool callAlarms();
  bool drawIfNeeded();
  void sleep(std::optional<Clock::time_point> limit);

  std::mutex mutex_;
  std::vector<Block> queue_;
  enum class Need { Nothing, Part, All };
  Need needsDisplay_ = Need::Nothing;
  bool isAsleep_ = false;
  std::atomic<bool> stopped_ = false;
  int wakeDescriptor_;
  std::map<int, std::shared_ptr<Source>> sources_;
  bool sourcesMayHaveMore_ = true;
  struct Alarm {
    Clock::time_point moment;
    Block block;
  };
  std::map<const void*, Alarm> alarms_;
  Draw draw_;
};

}  // namespace platform::backend
