#include "platform/operation_queue.h"

#include <deque>
#include <limits>
#include <mutex>
#include <thread>
#include <utility>

#include "platform/linux/activity.h"
#include "platform/linux/run_loop.h"

namespace platform {

struct NSOperationQueue::Impl : std::enable_shared_from_this<NSOperationQueue::Impl> {
  explicit Impl(bool isMainQueue) : isMain(isMainQueue) {}

  const bool isMain;
  std::mutex mutex;
  std::deque<std::function<void()>> blocks;
  int maximum = std::numeric_limits<int>::max();
  int workers = 0;

  void add(std::function<void()> block) {
    beginBackgroundOperation();
    std::lock_guard lock(mutex);
    blocks.push_back(std::move(block));
    if (workers >= maximum) return;
    ++workers;
    std::thread([queue = shared_from_this()] { queue->work(); }).detach();
  }

  // A worker lives while there is work, so an idle queue costs nothing.
  void work() {
    while (auto block = next()) {
      block();
      block = nullptr;
      endBackgroundOperation();
      RunLoop::main().wake();
    }
  }

  std::function<void()> next() {
    std::lock_guard lock(mutex);
    if (blocks.empty()) {
      --workers;
      return nullptr;
    }
    auto block = std::move(blocks.front());
    blocks.pop_front();
    return block;
  }
};

NSOperationQueue::NSOperationQueue() : NSOperationQueue(std::make_shared<Impl>(false)) {}
NSOperationQueue::NSOperationQueue(std::shared_ptr<Impl> impl) : impl_(std::move(impl)) {}
NSOperationQueue::~NSOperationQueue() = default;

// Never destroyed: a late block may still speak to it while the process ends.
NSOperationQueue& NSOperationQueue::mainQueue() {
  static auto* queue = new NSOperationQueue(std::make_shared<Impl>(true));
  return *queue;
}

void NSOperationQueue::setMaxConcurrentOperationCount(int count) {
  impl_->maximum = count;
}

void NSOperationQueue::addOperationWithBlock(std::function<void()> block) {
  if (impl_->isMain) {
    RunLoop::main().perform(std::move(block));
  } else {
    impl_->add(std::move(block));
  }
}

}  // namespace platform
