// Named endpoints between processes: a message is a name without reply. Sending works on any
// thread and is silent where no server exists; the rest belongs to the main thread, on which
// received messages are handed over. Blocks that were on the main queue before a message is handed
// over run before that.
#pragma once

#include <functional>
#include <memory>
#include <string>

namespace platform {

class CPDistributedMessagingCenter {
 public:
  // The same name gives the same center.
  static std::shared_ptr<CPDistributedMessagingCenter> centerNamed(const std::string& name);

  // Whether any process serves this name.
  bool doesServerExist() const;
  void runServerOnCurrentThread();
  // Further registrations for one message name are called in their order.
  void registerForMessageName(const std::string& message, std::function<void()> target);
  void sendMessageName(const std::string& message) const;

  ~CPDistributedMessagingCenter();

 private:
  struct Impl;
  explicit CPDistributedMessagingCenter(std::unique_ptr<Impl> impl);
  std::unique_ptr<Impl> impl_;
};

}  // namespace platform
