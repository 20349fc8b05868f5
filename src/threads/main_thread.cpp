#include "threads/main_thread.h"

#include "platform/operation_queue.h"

namespace lumora {

bool isMainThread() {
  using platform::NSOperationQueue;
  return NSOperationQueue::currentQueue() == NSOperationQueue::mainQueue();
}

}  // namespace lumora
