// Named endpoints between processes. A message is a name and has no reply. centerNamed and
// sendMessageName work on any thread, all other functions on the main thread, where messages are
// delivered. Blocks that are on the main queue when a message arrives run before it is delivered.
// All failures are silent.
#pragma once

#include <functional>
#include <memory>
#include <string>

namespace platform {

class CPDistributedMessagingCenter {
 public:
  // Returns the center of this name, the same one for every call, never nullptr. It is never
  // destroyed.
  static std::shared_ptr<CPDistributedMessagingCenter> centerNamed(const std::string& name);

  // Returns true if a process serves this name. May wait up to a second for the answer; returns
  // false if none comes.
  bool doesServerExist() const;
  // Makes this process the server of the name, unless another one is.
  void runServerOnCurrentThread();
  // Calls target for each message of this name. Several targets for one name are called in the
  // order of their registration. On Linux, messages whose name the bus does not allow never arrive.
  void registerForMessageName(const std::string& message, std::function<void()> target);
  // Sends a message, without waiting until it is delivered. It is lost if no process serves the
  // name.
  void sendMessageName(const std::string& message) const;

  ~CPDistributedMessagingCenter();

 private:
  struct Impl;
  explicit CPDistributedMessagingCenter(std::unique_ptr<Impl> impl);
  std::unique_ptr<Impl> impl_;
};

}  // namespace platform
