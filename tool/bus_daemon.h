// A message bus for one device: a dbus-daemon of its own, which ends with this object, or with this
// process should it die.
#pragma once

#include <string>

#include <sys/types.h>

namespace tool {

class BusDaemon {
 public:
  // The daemon's complaints go to the file named. Throws Failure if it cannot be started.
  explicit BusDaemon(const std::string& errorFile);
  ~BusDaemon();
  BusDaemon(const BusDaemon&) = delete;
  BusDaemon& operator=(const BusDaemon&) = delete;

  const std::string& address() const { return address_; }
  pid_t process() const { return process_; }

  // Removes what a daemon that could not clean up has left behind.
  static void removeRemains(const std::string& address);

 private:
  void start(const std::string& errorFile);

  std::string directory_;
  std::string address_;
  pid_t process_ = -1;
};

}  // namespace tool
