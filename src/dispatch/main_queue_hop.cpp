#include "dispatch/main_queue_hop.h"

#include <memory>
#include <utility>

#include "dispatch/exception_barrier.h"
#include "dispatch/queues.h"
#include "platform/semaphore.h"

namespace lumora {

void hopToMainQueue(std::function<void()> block, Deadline deadline) {
  auto semaphore = std::make_shared<platform::DispatchSemaphore>();
  addToMainQueue([block = std::move(block), semaphore] {
    stoppingExceptions(block);
    semaphore->signal();
  });
  semaphore->wait(timeLeft(deadline));
}

}  // namespace lumora
