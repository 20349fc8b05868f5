// A home screen and its bus, as child processes.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <sys/types.h>

#include "command_line/failure.h"
#include "host/options/host_options.h"
#include "platform/linux/files/file_descriptor.h"
#include "tool/device/bus_daemon.h"
#include "tool/device/file_lock.h"
#include "tool/device/host_connection.h"
#include "tool/support/time_limit.h"

namespace tool {

// A home screen is already running for the device.
class AlreadyRunning : public command_line::Failure {
 public:
  explicit AlreadyRunning(const DeviceFolder& device);
};

// Throws AlreadyRunning if one is.
void requireNoHost(const DeviceFolder& device);

class HostProcess {
 public:
  // Starts both, after waiting a moment for a home screen that is ending. libraries: the files that
  // the home screen loads, in this order. device must outlive the object. Throws AlreadyRunning if
  // one is running for the device, and Failure if none can be started.
  HostProcess(const DeviceFolder& device, const host::HostOptions& options,
              const std::vector<std::string>& libraries);
  // Ends both.
  ~HostProcess();
  HostProcess(const HostProcess&) = delete;
  HostProcess& operator=(const HostProcess&) = delete;

  // Returns a connection as soon as the home screen has launched, and nullptr before. Throws
  // Failure if that takes too long.
  std::unique_ptr<HostConnection> findLaunched();
  // Waits for that. Throws Failure if the home screen ends or takes too long.
  std::unique_ptr<HostConnection> awaitLaunch();

  // Returns true if the home screen has ended by itself.
  bool hasEnded();
  // Returns how it has ended; the home screen has printed the reason of a failure. Throws Failure
  // if a signal has ended it or it could not be started. Requires that hasEnded.
  int exitCode() const;

  // Returns a descriptor, owned by this object, that can be read when the device folder, or one
  // above it, may have been moved or deleted.
  int folderChanges() const { return moves_.get(); }
  // Throws Failure if that is so: then no command can reach the home screen.
  void checkFolder();

 private:
  void takeLock();
  void start(const host::HostOptions& options, const std::vector<std::string>& libraries);

  const DeviceFolder& device_;
  FileLock lock_;
  const platform::backend::FileDescriptor moves_;
  std::unique_ptr<BusDaemon> bus_;
  pid_t process_ = -1;
  int status_ = 0;
  bool hasUnfinishedCache_ = false;
  const TimeLimit launchLimit_;
};

}  // namespace tool
