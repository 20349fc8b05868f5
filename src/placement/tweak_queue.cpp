#include "placement/tweak_queue.h"

#include <memory>
#include <utility>

#include "threads/guarded.h"
#include "threads/queues.h"

namespace lumora {
namespace {

constinit GuardedGlobal<std::shared_ptr<platform::NSOperationQueue>> tweakQueue;

}  // namespace

void createTweakQueue() {
  auto queue = std::make_shared<platform::NSOperationQueue>();
  queue->setMaxConcurrentOperationCount(1);
  tweakQueue.store(std::move(queue));
}

void addToTweakQueue(std::function<void()> block) {
  if (auto queue = tweakQueue.load()) addToQueue(*queue, std::move(block));
}

}  // namespace lumora
