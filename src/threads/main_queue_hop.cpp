#include "threads/main_queue_hop.h"

#include <memory>
#include <utility>

#include "platform/semaphore.h"
#include "threads/exception_barrier.h"
#include "threads/queues.h"

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
