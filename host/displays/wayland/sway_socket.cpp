#include "host/displays/wayland/sway_socket.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <utility>

#include <sys/socket.h>
#include <sys/un.h>

#include "platform/linux/main_loop/run_loop.h"

namespace host::wayland {
namespace {

using platform::backend::FileDescriptor;
using platform::backend::RunLoop;

constexpr std::string_view magic = "i3-ipc";

// What follows the magic bytes, in the byte order of the machine.
struct Header {
  std::uint32_t length = 0;
  std::uint32_t type = 0;
};
constexpr std::size_t headerSize = magic.size() + sizeof(Header);

std::string socketPath() {
  for (const char* variable : {"SWAYSOCK", "I3SOCK"}) {
    const char* path = std::getenv(variable);
    if (path != nullptr && *path != '\0') return path;
  }
  return "";
}

FileDescriptor connectTo(const std::string& path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (path.empty() || path.size() >= sizeof address.sun_path) return FileDescriptor();
  std::memcpy(address.sun_path, path.data(), path.size());
  FileDescriptor descriptor(socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
  const auto* general = reinterpret_cast<const sockaddr*>(&address);
  if (connect(descriptor.get(), general, sizeof address) != 0) return FileDescriptor();
  return descriptor;
}

}  // namespace

SwaySocket::SwaySocket(Receive receive, std::function<void()> closed)
    : receive_(std::move(receive)),
      closed_(std::move(closed)),
      descriptor_(connectTo(socketPath())) {
  if (isOpen()) RunLoop::main().addSource(descriptor_.get(), [this] { return handleEvents(); });
}

SwaySocket::~SwaySocket() {
  if (isOpen()) RunLoop::main().removeSource(descriptor_.get());
}

void SwaySocket::close() {
  RunLoop::main().removeSource(descriptor_.get());
  descriptor_ = FileDescriptor();
  received_.clear();
  closed_();
}

void SwaySocket::send(std::uint32_t type, std::string_view text) {
  if (!isOpen()) return;
  const Header header{static_cast<std::uint32_t>(text.size()), type};
  std::string message(magic);
  message.append(reinterpret_cast<const char*>(&header), sizeof header).append(text);
  // The few bytes that we send fit, unless the compositor has not read for a long time.
  const ssize_t sent = ::send(descriptor_.get(), message.data(), message.size(), MSG_NOSIGNAL);
  if (sent != static_cast<ssize_t>(message.size())) close();
}

bool SwaySocket::handleEvents() {
  const std::size_t before = received_.size();
  if (!readAll()) {
    close();
    return true;
  }
  if (received_.size() == before) return false;
  if (!takeMessages()) close();
  return true;
}

// Returns false if the connection has ended.
bool SwaySocket::readAll() {
  char bytes[65536];
  for (;;) {
    const ssize_t count = recv(descriptor_.get(), bytes, sizeof bytes, 0);
    if (count < 0) return errno == EAGAIN || errno == EINTR;
    if (count == 0) return false;
    received_.append(bytes, static_cast<std::size_t>(count));
  }
}

// Returns false if what was received is not a message.
bool SwaySocket::takeMessages() {
  constexpr std::uint32_t maxLength = 1 << 24;
  while (isOpen() && received_.size() >= headerSize) {
    Header header;
    std::memcpy(&header, received_.data() + magic.size(), sizeof header);
    if (!received_.starts_with(magic) || header.length > maxLength) return false;
    if (received_.size() < headerSize + header.length) return true;
    const std::string text = received_.substr(headerSize, header.length);
    received_.erase(0, headerSize + header.length);
    receive_(header.type, text);
  }
  return true;
}

}  // namespace host::wayland
