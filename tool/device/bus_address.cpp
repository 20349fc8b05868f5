#include "tool/device/bus_address.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace tool {
namespace {

// Returns true if only this user, or root, can put a socket into the folder.
bool isPrivate(const platform::backend::FileDescriptor& folder) {
  struct stat status {};
  return folder && fstat(folder.get(), &status) == 0 && status.st_uid == geteuid() &&
         (status.st_mode & (S_IRWXG | S_IRWXO)) == 0;
}

bool becomesReady(int socket, short events, const TimeLimit& limit) {
  pollfd waiting{socket, events, 0};
  const auto rest = std::chrono::ceil<std::chrono::milliseconds>(limit.left());
  return poll(&waiting, 1, static_cast<int>(rest.count())) == 1;
}

// Returns a NUL and the first line of the protocol, which has the user's number: each decimal digit
// as the hexadecimal code of its character.
std::string login() {
  std::string line(1, '\0');
  line += "AUTH EXTERNAL ";
  for (const char digit : std::to_string(geteuid())) {
    char pair[3];
    std::snprintf(pair, sizeof pair, "%02x", static_cast<unsigned>(digit));
    line += pair;
  }
  return line + "\r\n";
}

}  // namespace

BusAddress::BusAddress(const std::string& address) {
  const std::string start = "unix:path=";
  if (!address.starts_with(start)) return;
  const std::size_t end = std::min(address.find(','), address.size());
  const std::filesystem::path path = address.substr(start.size(), end - start.size());
  platform::backend::FileDescriptor folder(
      open(path.parent_path().c_str(), O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
  if (!isPrivate(folder)) return;
  folder_ = std::move(folder);
  name_ = path.filename();
  rest_ = address.substr(end);
}

std::string BusAddress::socketPath() const {
  return folder_ ? "/proc/self/fd/" + std::to_string(folder_.get()) + "/" + name_ : "";
}

std::string BusAddress::address() const {
  return "unix:path=" + socketPath() + rest_;
}

BusState BusAddress::state(Seconds timeout) const {
  const std::string path = socketPath();
  sockaddr_un name{};
  name.sun_family = AF_UNIX;
  if (path.empty() || path.size() >= sizeof name.sun_path) return BusState::Absent;
  std::copy(path.begin(), path.end(), name.sun_path);
  const platform::backend::FileDescriptor end(
      socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  if (!end) return BusState::Silent;
  const TimeLimit limit(timeout);
  if (connect(end.get(), reinterpret_cast<const sockaddr*>(&name), sizeof name) != 0) {
    // The queue of waiting clients is full.
    return errno == EAGAIN ? BusState::Silent : BusState::Absent;
  }
  const std::string line = login();
  if (send(end.get(), line.data(), line.size(), MSG_NOSIGNAL) < 0) return BusState::Absent;
  if (!becomesReady(end.get(), POLLIN, limit)) return BusState::Silent;
  char answer[2]{};
  const ssize_t size = recv(end.get(), answer, sizeof answer, 0);
  return size == sizeof answer && answer[0] == 'O' && answer[1] == 'K' ? BusState::Answering
                                                                       : BusState::Absent;
}

}  // namespace tool
