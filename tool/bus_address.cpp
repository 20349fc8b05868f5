#include "tool/bus_address.h"

#include <algorithm>

#include <sys/socket.h>
#include <sys/un.h>

#include "platform/linux/device_root.h"

namespace tool {

std::string socketPath(const std::string& address) {
  const std::string start = "unix:path=";
  if (!address.starts_with(start)) return "";
  return address.substr(start.size(), address.find(',') - start.size());
}

bool isListening(const std::string& address) {
  const std::string path = socketPath(address);
  sockaddr_un name{};
  name.sun_family = AF_UNIX;
  if (path.empty() || path.size() >= sizeof name.sun_path) return false;
  std::copy(path.begin(), path.end(), name.sun_path);
  const platform::FileDescriptor end(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  return connect(end.get(), reinterpret_cast<const sockaddr*>(&name), sizeof name) == 0;
}

}  // namespace tool
