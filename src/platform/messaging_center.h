// Named endpoints between processes: a message is a name without reply. centerNamed and sending
// work on any thread, and sending is silent where no server exists; the rest belongs to the main
// thread, on which received messages are delivered. Blocks that were on the main queue before a
// message is delivered run before that.
#pragma once

#include <functional>
#include <memory>
#include <string>

namespace platform {

class CPDistributedMessagingCenter {
 public:
  // The same name gives the same center.
  static std::shared_ptr<CPDistributedMessagingCenter> centerNamed(const std::string& name);

  // Returns true if any process serves this name. May wait for the answer, for a second at most.
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
