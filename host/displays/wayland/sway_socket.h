// A connection to a compositor that speaks sway's IPC. Never waits for it. Main thread.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "platform/linux/files/file_descriptor.h"

namespace host::wayland {

class SwaySocket {
 public:
  using Receive = std::function<void(std::uint32_t type, std::string_view text)>;

  // Connects to the socket that SWAYSOCK or I3SOCK names. The connection is closed for good, and
  // closed is called, when the compositor closes it or breaks the protocol. Without such a socket
  // it is closed from the start.
  SwaySocket(Receive receive, std::function<void()> closed);
  ~SwaySocket();
  SwaySocket(const SwaySocket&) = delete;
  SwaySocket& operator=(const SwaySocket&) = delete;

  bool isOpen() const { return bool(descriptor_); }
  // Does nothing if the connection is closed.
  void send(std::uint32_t type, std::string_view text);

 private:
  bool handleEvents();
  bool readAll();
  bool takeMessages();
  void close();

  const Receive receive_;
  const std::function<void()> closed_;
  platform::backend::FileDescriptor descriptor_;
  std::string received_;
};

}  // namespace host::wayland
