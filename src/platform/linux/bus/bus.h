// The device's message bus (D-Bus). The main thread listens on one connection, and all threads send
// on another, so that senders never wait for the main thread.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

#include <sdbus-c++/sdbus-c++.h>

namespace platform::backend {

// Asks the bus of this connection if a process owns the name. Throws sdbus::Error if no answer
// comes before the timeout.
bool nameHasOwner(sdbus::IConnection& connection, const std::string& name,
                  std::chrono::microseconds timeout);

class Bus {
 public:
  // Connects this process. Call it once, on the main thread. lost is called there when the bus is
  // gone. Throws sdbus::Error if there is no bus at the address.
  static void open(const std::string& address, std::function<void()> lost);
  // Returns the connection of this process, or nullptr if it has not been connected. Any thread.
  static Bus* current();

  // Returns true on the thread that opened the bus, the only one that may use the listener.
  bool isListeningThread() const { return std::this_thread::get_id() == listeningThread_; }
  // Requires a caller in a block of the main queue, or before the run loop's first turn: only then
  // are messages that the connection reads ahead handled in the next turn.
  sdbus::IConnection& listener() { return *listener_; }

  // These work on any thread, are silent if the bus is gone, and may wait up to a second for it.
  void emitSignal(const std::string& path, const std::string& interface, const std::string& signal,
                  const std::string& argument);
  void callWithoutReply(const std::string& destination, const std::string& path,
                        const std::string& interface, const std::string& method);
  // Returns true if a process owns the name on the bus; false also if no answer comes.
  bool nameHasOwner(const std::string& name);

  // Calls done on the main thread once every message that this process has sent so far, and every
  // message that the bus held for it then, has been handled. A second call replaces the first one's
  // done if that is still to come. Never calls done if the bus is gone. Main thread.
  void whenDelivered(std::function<void()> done);

 private:
  Bus(const std::string& address, std::function<void()> lost);
  // Handles one message. Returns true if there was one. Handles no more than one, so that the
  // blocks that it puts on the main queue run before the next message, as on the device.
  bool handlePending();
  void flushSender();
  // Calls use with the sending connection and drops all errors of the bus.
  void send(const std::function<void(sdbus::IConnection&)>& use);

  std::unique_ptr<sdbus::IConnection> listener_;
  std::unique_ptr<sdbus::IConnection> sender_;
  std::mutex senderMutex_;
  const std::thread::id listeningThread_ = std::this_thread::get_id();
  const int listenerDescriptor_;
  std::unique_ptr<sdbus::IObject> barrierObject_;
  std::function<void()> lost_;
  std::function<void()> delivered_;
};

}  // namespace platform::backend
