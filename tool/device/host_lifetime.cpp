#include "tool/device/host_lifetime.h"

#include <thread>

#include "host/control/control_names.h"
#include "tool/device/file_lock.h"
#include "tool/device/host_connection.h"
#include "tool/support/failure.h"

namespace tool {

void awaitHost(const DeviceFolder& device, Seconds timeout) {
  constexpr std::chrono::milliseconds pause{20};
  const TimeLimit limit(timeout);
  while (!HostConnection::find(device, limit.left())) {
    if (limit.isOver()) HostConnection::require(device, limit.left());
    std::this_thread::sleep_for(pause);
  }
}

void stopHost(const DeviceFolder& device, Seconds timeout) {
  const TimeLimit limit(timeout);
  HostConnection::require(device, limit.left())->call(host::service::method::stop, limit.left());
  FileLock lock(device, FileLock::host);
  if (!lock.take(limit.left())) {
    throw Failure("the home screen is still running after the timeout");
  }
}

}  // namespace tool
