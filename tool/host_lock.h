// The right to run a device's home screen: one process has it at a time, and loses it with its
// life.
#pragma once

#include "platform/linux/device_root.h"
#include "tool/device_folder.h"

namespace tool {

class HostLock {
 public:
  // Whether nobody runs the device's home screen.
  static bool isFree(const DeviceFolder& device);

  // Takes the lock; throws Failure if another home screen has it. One that is just ending is waited
  // for. Programs that this process starts inherit the lock, so that it lasts until they have
  // ended.
  explicit HostLock(const DeviceFolder& device);

 private:
  platform::FileDescriptor file_;
};

}  // namespace tool
