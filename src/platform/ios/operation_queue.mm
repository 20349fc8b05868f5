#include "platform/operation_queue.h"

#import <Foundation/Foundation.h>

#include "platform/ios/retained.h"

namespace platform {

struct NSOperationQueue::Impl {
  Retained<::NSOperationQueue> native;
};

NSOperationQueue::NSOperationQueue()
    : NSOperationQueue(std::make_shared<Impl>(
          Impl{Retained<::NSOperationQueue>::adopt([[::NSOperationQueue alloc] init])})) {}
NSOperationQueue::NSOperationQueue(std::shared_ptr<Impl> impl) : impl_(std::move(impl)) {}

NSOperationQueue& NSOperationQueue::mainQueue() {
  static auto* queue = new NSOperationQueue(
      std::make_shared<Impl>(Impl{Retained<::NSOperationQueue>([::NSOperationQueue mainQueue])}));
  return *queue;
}

std::optional<NSOperationQueue> NSOperationQueue::currentQueue() {
  ::NSOperationQueue* native = [::NSOperationQueue currentQueue];
  if (native == nullptr) return std::nullopt;
  return NSOperationQueue(std::make_shared<Impl>(Impl{Retained<::NSOperationQueue>(native)}));
}

bool operator==(const NSOperationQueue& one, const NSOperationQueue& other) {
  return one.impl_->native.get() == other.impl_->native.get();
}

void NSOperationQueue::setMaxConcurrentOperationCount(int count) {
  [impl_->native.get() setMaxConcurrentOperationCount:count];
}

// The native queue drains an autorelease pool around every operation.
void NSOperationQueue::addOperationWithBlock(std::function<void()> block) {
  void (^native)(void) = ^{
    block();
  };
  if (*this == mainQueue()) {
    [impl_->native.get() addOperationWithBlock:native];
  } else {
    [impl_->native.get() addOperation:[NSBlockOperation blockOperationWithBlock:native]];
  }
}

}  // namespace platform
