// The address of a device's message bus: a socket with a path.
#pragma once

#include <string>

#include "platform/linux/files/file_descriptor.h"
#include "tool/support/time_limit.h"

namespace tool {

enum class BusState {
  // Nobody listens, or another user could.
  Absent,
  // Somebody listens, but does not answer in time.
  Silent,
  Answering,
};

// The way to a bus's socket. The folder that it is in is opened once, and everything else goes by
// that: whoever can change a folder on the way to it cannot lead a client elsewhere in between.
class BusAddress {
 public:
  // As the bus's daemon has printed it.
  explicit BusAddress(const std::string& address);

  // What the bus's library takes; as long as this object lives.
  std::string address() const;

  // Begins to log in, as every client does, and goes away again; so it never waits longer than
  // said. The bus is absent if the folder is not this user's alone.
  BusState state(Seconds timeout) const;

 private:
  // Beside the open folder; "" if there is none that can be used.
  std::string socketPath() const;

  platform::backend::FileDescriptor folder_;
  std::string name_;
  // Of the daemon's own address, what follows the path.
  std::string rest_;
};

}  // namespace tool
