#include "threads/queues.h"

#include <utility>

#include "threads/exception_barrier.h"

namespace lumora {

using platform::NSOperationQueue;

void addToQueue(NSOperationQueue& queue, std::function<void()> block) {
  queue.addOperationWithBlock([block = std::move(block)] { stoppingExceptions(block); });
}

void addToMainQueue(std::function<void()> block) {
  addToQueue(NSOperationQueue::mainQueue(), std::move(block));
}

void runInBackground(std::function<void()> block) {
  NSOperationQueue queue;
  addToQueue(queue, std::move(block));
}

}  // namespace lumora
