// A queue of blocks that run in the order added: the main queue on the main thread, every other on
// background threads. Any thread may add. A queue that is let go of still runs what it holds.
#pragma once

#include <functional>
#include <memory>
#include <optional>

namespace platform {

class NSOperationQueue {
 public:
  NSOperationQueue();

  static NSOperationQueue& mainQueue();
  // The queue whose block the calling thread is running; nothing where there is none.
  static std::optional<NSOperationQueue> currentQueue();

  // How many blocks may run at the same time, at least 1. Queues without a limit share a few
  // threads, and their blocks wait for one of these. To be set before the first block is added.
  void setMaxConcurrentOperationCount(int count);
  // If no thread can be had, the block waits for the next one. The block must not throw.
  void addOperationWithBlock(std::function<void()> block);

  // Whether both are the same queue. A copy is the same queue as the original.
  friend bool operator==(const NSOperationQueue& one, const NSOperationQueue& other);

 private:
  struct Impl;
  explicit NSOperationQueue(std::shared_ptr<Impl> impl);
  std::shared_ptr<Impl> impl_;
};

}  // namespace platform
