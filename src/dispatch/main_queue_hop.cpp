#include "dispatch/main_queue_hop.h"

#include <memory>
#include <utility>

#include "platform/operation_queue.h"

namespace lumora {

void hopToMainQueue(std::function<void()> block, Deadline deadline) {
  auto semaphore = std::make_shared<Semaphore>();
  platform::NSOperationQueue::mainQueue().addOperationWithBlock(
      [block = std::move(block), semaphore] {
        block();
        semaphore->signal();
      });
  semaphore->waitUntil(deadline);
}

}  // namespace lumora
