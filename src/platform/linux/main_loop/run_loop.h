// The main thread's run loop: main queue, display refreshes, an alarm, file descriptors and
// drawing. It sleeps while there is nothing to do. All of it belongs to the main thread, but for
// perform, setNeedsDisplay and its like, stop and wake, which any thread may call.
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
  // Runs queued blocks, also those that they queue, until none is left. Returns true if there were
  // any. Not within such a block.
  bool runMainQueue();

  // A source of events on a file descriptor. Its handler is called when there is something to read,
  // and also after anything else was done but a mere refresh, because libraries read ahead; it
  // handles what is there without waiting and tells whether there was anything.
  using Source = std::function<bool()>;
  void addSource(int fileDescriptor, Source handler);
  void removeSource(int fileDescriptor);

  // Calls the block once, not before the moment given. There is one alarm: a new one replaces it.
  void setAlarm(Clock::time_point moment, Block block);
  void clearAlarm();

  // What draws the screen; called at most once per turn, and only if that is needed. It is told
  // whether all must be drawn, or only what has changed.
  using Draw = std::function<void(bool isAll)>;
  void setDrawing(Draw draw);
  void setNeedsDisplay();
  void setNeedsPartialDisplay();

  // Tells whoever turns the loop to leave it; a sleeping turn ends.
  void stop();
  bool isStopped() const { return stopped_; }
  // Ends the sleep of a turn.
  void wake() const;
  // Handles what is due without ever sleeping. Returns true if anything other than a refresh was
  // handled.
  bool handleDue();
  // One turn: handles what is due or, if nothing is, sleeps until something happens, at most until
  // the limit.
  void turn(std::optional<Clock::time_point> limit);

 private:
  RunLoop();
  std::vector<Block> takeQueue();
  bool handleWhatMayBeDue();
  bool handleSources();
  bool callAlarm();
  bool drawIfNeeded();
  void sleep(std::optional<Clock::time_point> limit);

  std::mutex mutex_;
  std::vector<Block> queue_;
  enum class Need { Nothing, Part, All };
  Need needsDisplay_ = Need::Nothing;
  std::atomic<bool> stopped_ = false;
  int wakeDescriptor_;
  std::map<int, std::shared_ptr<Source>> sources_;
  bool sourcesMayHaveMore_ = true;
  std::optional<Clock::time_point> alarmTime_;
  Block alarm_;
  Draw draw_;
};

}  // namespace platform::backend
