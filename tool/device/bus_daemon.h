// A message bus for one device: a dbus-daemon of its own, which ends with this object, or with this
// process should it die.
#pragma once

#include <string>

#include <sys/types.h>

#include "platform/linux/files/file_descriptor.h"

namespace tool {

// A short folder for a bus's socket, since a socket's path has at most 107 characters. It is gone
// with the object. Those of processes that could not clean up go when the next one is made.
class BusFolder {
 public:
  // Throws Failure.
  BusFolder();
  ~BusFolder();
  BusFolder(const BusFolder&) = delete;
  BusFolder& operator=(const BusFolder&) = delete;

  const std::string& path() const { return path_; }

 private:
  std::string path_;
  platform::backend::FileDescriptor lock_;
};

class BusDaemon {
 public:
  // The daemon's complaints go to the file, unless that is -1. Throws Failure if it cannot be
  // started.
  explicit BusDaemon(int errorFile);
  ~BusDaemon();
  BusDaemon(const BusDaemon&) = delete;
  BusDaemon& operator=(const BusDaemon&) = delete;

  const std::string& address() const { return address_; }

 private:
  const BusFolder folder_;
  std::string address_;
  pid_t process_ = -1;
};

}  // namespace tool
