// The address of a device's message bus: a socket with a path.
#pragma once

#include <string>

#include "platform/linux/files/file_descriptor.h"
#include "tool/support/time_limit.h"

namespace tool {

enum class BusState {
  // No daemon listens at the address, or other users may enter the socket's folder.
  Absent,
  // A daemon may be there, but did not answer before the timeout.
  Silent,
  Answering,
};

// The address of a bus's socket. The constructor opens the folder of the socket, and everything
// else uses the open folder, so that a later change of a folder above it cannot redirect a client.
class BusAddress {
 public:
  // address: as the daemon printed it. Any other text gives an absent bus.
  explicit BusAddress(const std::string& address);

  // Returns the address to connect to. It is valid as long as this object lives. Requires that the
  // bus is not Absent.
  std::string address() const;

  // Connects, begins to authenticate and disconnects. Waits until the timeout at most, unlike the
  // bus library's own connection.
  BusState state(Seconds timeout) const;

 private:
  // Returns a path through the open folder, or "" if there is none.
  std::string socketPath() const;

  platform::backend::FileDescriptor folder_;
  std::string name_;
  // The part of the daemon's address after the path.
  std::string rest_;
};

}  // namespace tool
