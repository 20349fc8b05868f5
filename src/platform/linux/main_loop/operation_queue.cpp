#include "platform/operation_queue.h"

#include <deque>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

#include "platform/linux/freed_memory.h"
#include "platform/linux/main_loop/activity.h"
#include "platform/linux/main_loop/run_loop.h"

namespace platform {
using namespace backend;

namespace {

// Threads that run blocks in the order added. A thread exits when there is no more work, so an idle
// queue costs nothing.
class Workers : public std::enable_shared_from_this<Workers> {
 public:
  explicit Workers(int maxThreads) : maxThreads_(maxThreads) {}

  void add(std::function<void()> block) {
    beginBackgroundOperation();
    std::lock_guard lock(mutex_);
    blocks_.push_back(std::move(block));
    if (count_ < maxThreads_) startOne();
  }

 private:
  void startOne() {
    try {
      std::thread([workers = shared_from_this()] { workers->work(); }).detach();
      ++count_;
    } catch (const std::system_error&) {
      // No thread can be started: the block waits until one is free or another block is added.
    }
  }

  void work() {
    while (auto block = next()) {
      block();
      block = nullptr;
      endBackgroundOperation();
      RunLoop::main().wake();
    }
    if (maxThreads_ > 1) giveFreedMemoryBack();
  }

  std::function<void()> next() {
    std::lock_guard lock(mutex_);
    if (blocks_.empty()) {
      --count_;
      return nullptr;
    }
    auto block = std::move(blocks_.front());
    blocks_.pop_front();
    return block;
  }

  const int maxThreads_;
  std::mutex mutex_;
  std::deque<std::function<void()>> blocks_;
  int count_ = 0;
};

// Shared by all queues without a limit. Their blocks work on whole frames, so more threads would
// take more memory without being faster. Never destroyed, because blocks may be added while the
// process exits.
const std::shared_ptr<Workers>& sharedWorkers() {
  constexpr int maxThreads = 4;
  static auto* workers = new std::shared_ptr<Workers>(std::make_shared<Workers>(maxThreads));
  return *workers;
}

// The queue whose block this thread is running.
thread_local const NSOperationQueue* runningQueue = nullptr;

void runBlockOf(const NSOperationQueue& queue, const std::function<void()>& block) {
  const auto* before = std::exchange(runningQueue, &queue);
  block();
  runningQueue = before;
}

}  // namespace

struct NSOperationQueue::Impl {
  bool isMain;
  std::shared_ptr<Workers> workers;
};

NSOperationQueue::NSOperationQueue()
    : NSOperationQueue(std::make_shared<Impl>(Impl{false, sharedWorkers()})) {}
NSOperationQueue::NSOperationQueue(std::shared_ptr<Impl> impl) : impl_(std::move(impl)) {}

// Never destroyed, because blocks may use it while the process exits.
NSOperationQueue& NSOperationQueue::mainQueue() {
  static auto* queue = new NSOperationQueue(std::make_shared<Impl>(Impl{true, nullptr}));
  return *queue;
}

bool operator==(const NSOperationQueue& one, const NSOperationQueue& other) {
  return one.impl_ == other.impl_;
}

void NSOperationQueue::setMaxConcurrentOperationCount(int count) {
  impl_->workers = std::make_shared<Workers>(count);
}

std::optional<NSOperationQueue> NSOperationQueue::currentQueue() {
  if (runningQueue == nullptr) return std::nullopt;
  return *runningQueue;
}

void NSOperationQueue::addOperationWithBlock(std::function<void()> block) {
  auto run = [queue = *this, block = std::move(block)] { runBlockOf(queue, block); };
  if (impl_->isMain) {
    RunLoop::main().perform(std::move(run));
  } else {
    impl_->workers->add(std::move(run));
  }
}

}  // namespace platform
