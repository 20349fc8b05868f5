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

// Threads that run blocks in the order added, at most so many at the same time. A thread lives
// while there is work, so an idle queue costs nothing.
class Workers : public std::enable_shared_from_this<Workers> {
 public:
  explicit Workers(int most) : most_(most) {}

  void add(std::function<void()> block) {
    beginBackgroundOperation();
    std::lock_guard lock(mutex_);
    blocks_.push_back(std::move(block));
    if (count_ < most_) startOne();
  }

 private:
  void startOne() {
    try {
      std::thread([workers = shared_from_this()] { workers->work(); }).detach();
      ++count_;
    } catch (const std::system_error&) {
      // The system has no thread to give: the block waits for those that run, or the next one
      // added.
    }
  }

  void work() {
    while (auto block = next()) {
      block();
      block = nullptr;
      endBackgroundOperation();
      RunLoop::main().wake();
    }
    if (most_ > 1) giveFreedMemoryBack();
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

  const int most_;
  std::mutex mutex_;
  std::deque<std::function<void()>> blocks_;
  int count_ = 0;
};

// Of all queues without a limit of their own, however many there are. What runs there works on
// whole frames, so more at a time would cost memory and gain nothing. Never destroyed, as blocks
// may still be added while the process ends.
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

// Never destroyed: a late block may still speak to it while the process ends.
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
