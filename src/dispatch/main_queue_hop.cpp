#include "dispatch/main_queue_hop.h"

#include <memory>
#include <utility>

#include "dispatch/exception_barrier.h"
#include "dispatch/queues.h"

namespace lumora {

void hopToMainQueue(std::function<void()> block, Deadline deadline) {
  auto semaphore = std::make_shared<Semaphore>();
  addToMainQueue([block = std::move(block), semaphore] {
    stoppingExceptions(block);
    semaphore->signal();
  });
  semaphore->waitUntil(deadline);
}

}  // namespace lumora
