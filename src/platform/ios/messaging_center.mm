#include "platform/messaging_center.h"

#include <map>
#include <mutex>
#include <utility>
#include <vector>

#import <AppSupport/CPDistributedMessagingCenter.h>

#import "platform/ios/native_string.h"
#include "platform/ios/retained.h"

// Receives the messages of one name and calls all targets in the order of their registration.
@interface LWMessageTarget : NSObject {
 @private
  std::vector<std::function<void()>> targets_;
}
- (void)addTarget:(std::function<void()>)target;
- (NSDictionary*)handleMessageNamed:(NSString*)name userInfo:(NSDictionary*)userInfo;
@end

@implementation LWMessageTarget

- (void)addTarget:(std::function<void()>)target {
  targets_.push_back(std::move(target));
}

- (NSDictionary*)handleMessageNamed:(NSString*)name userInfo:(NSDictionary*)userInfo {
  const auto targets = targets_;
  for (const auto& target : targets) target();
  // No reply.
  return nullptr;
}

@end

namespace platform {

struct CPDistributedMessagingCenter::Impl {
  Retained<::CPDistributedMessagingCenter> native;
  std::map<std::string, Retained<LWMessageTarget>> targets;
};

CPDistributedMessagingCenter::CPDistributedMessagingCenter(std::unique_ptr<Impl> impl)
    : impl_(std::move(impl)) {}
CPDistributedMessagingCenter::~CPDistributedMessagingCenter() = default;

std::shared_ptr<CPDistributedMessagingCenter> CPDistributedMessagingCenter::centerNamed(
    const std::string& name) {
  static auto* mutex = new std::mutex;
  static auto* centers = new std::map<std::string, std::shared_ptr<CPDistributedMessagingCenter>>;
  std::lock_guard lock(*mutex);
  auto& center = (*centers)[name];
  if (!center) {
    Retained<::CPDistributedMessagingCenter> native(
        [::CPDistributedMessagingCenter centerNamed:nativeString(name)]);
    center.reset(
        new CPDistributedMessagingCenter(std::make_unique<Impl>(Impl{std::move(native), {}})));
  }
  return center;
}

bool CPDistributedMessagingCenter::doesServerExist() const {
  return [impl_->native.get() doesServerExist];
}

void CPDistributedMessagingCenter::runServerOnCurrentThread() {
  [impl_->native.get() runServerOnCurrentThread];
}

void CPDistributedMessagingCenter::registerForMessageName(const std::string& message,
                                                          std::function<void()> target) {
  auto& known = impl_->targets[message];
  const bool isFirst = known.get() == nullptr;
  if (isFirst) known = Retained<LWMessageTarget>::adopt([[LWMessageTarget alloc] init]);
  [known.get() addTarget:std::move(target)];
  if (!isFirst) return;
  [impl_->native.get() registerForMessageName:nativeString(message)
                                       target:known.get()
                                     selector:@selector(handleMessageNamed:userInfo:)];
}

void CPDistributedMessagingCenter::sendMessageName(const std::string& message) const {
  [impl_->native.get() sendMessageName:nativeString(message) userInfo:nullptr];
}

}  // namespace platform
