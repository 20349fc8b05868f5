// A queue of blocks that run in the order added: the main queue on the main thread, every other on
// background threads. Any thread may add. A queue that is let go of still runs what it holds.
#pragma once

#include <functional>
#include <memory>

namespace platform {

class NSOperationQueue {
 public:
  NSOperationQueue();
  ~NSOperationQueue();

  static NSOperationQueue& mainQueue();

  // How many blocks may run at the same time, at least 1; else as many as suits the machine, of all
  // such queues together. To be set before the first block is added.
  void setMaxConcurrentOperationCount(int count);
  // The block must not throw.
  void addOperationWithBlock(std::function<void()> block);

 private:
  struct Impl;
  explicit NSOperationQueue(std::shared_ptr<Impl> impl);
  std::shared_ptr<Impl> impl_;
};

}  // namespace platform
