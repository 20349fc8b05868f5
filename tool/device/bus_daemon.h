// A message bus for one device.
#pragma once

#include <string>

#include <sys/types.h>

#include "platform/linux/files/file_descriptor.h"

namespace tool {

// A folder for a bus's socket. Its path is short, because a socket's path has at most 107
// characters. The destructor deletes it; the constructor deletes those of processes that were
// killed.
class BusFolder {
 public:
  // Throws Failure if no folder can be made.
  BusFolder();
  ~BusFolder();
  BusFolder(const BusFolder&) = delete;
  BusFolder& operator=(const BusFolder&) = delete;

  const std::string& path() const { return path_; }

 private:
  std::string path_;
  platform::backend::FileDescriptor lock_;
};

// A dbus-daemon, which ends with this object, or with this process if that is killed.
class BusDaemon {
 public:
  // Starts the daemon and waits until it is ready. The daemon's stderr goes to the descriptor
  // errorFile, unless that is -1. Throws Failure if it cannot be started.
  explicit BusDaemon(int errorFile);
  ~BusDaemon();
  BusDaemon(const BusDaemon&) = delete;
  BusDaemon& operator=(const BusDaemon&) = delete;

  // The address as the daemon printed it.
  const std::string& address() const { return address_; }

 private:
  const BusFolder folder_;
  std::string address_;
  pid_t process_ = -1;
};

}  // namespace tool
