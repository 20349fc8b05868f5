// A queue of blocks, which start in the order in which they were added: the main queue's on the
// main thread, every other queue's on background threads. Any thread. A copy is the same queue.
// Destroying the last copy does not cancel any blocks.
#pragma once

#include <functional>
#include <memory>
#include <optional>

namespace platform {

class NSOperationQueue {
 public:
  NSOperationQueue();

  // Returns the main queue, which is never destroyed.
  static NSOperationQueue& mainQueue();
  // Returns the queue whose block the calling thread is running, or nothing if it runs none.
  static std::optional<NSOperationQueue> currentQueue();

  // Limits how many blocks run at the same time. Requires at least 1, and a queue to which nothing
  // has been added. Queues without a limit share a few threads, and their blocks wait for a free
  // one.
  void setMaxConcurrentOperationCount(int count);
  // Queues a block, which must not throw. If no thread can be started, the block waits until one is
  // free or, on Linux, another block is added.
  void addOperationWithBlock(std::function<void()> block);

  // Returns true if both are the same queue.
  friend bool operator==(const NSOperationQueue& one, const NSOperationQueue& other);

 private:
  struct Impl;
  explicit NSOperationQueue(std::shared_ptr<Impl> impl);
  std::shared_ptr<Impl> impl_;
};

}  // namespace platform
