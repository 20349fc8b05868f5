// The device's message bus (D-Bus): one connection that the main thread listens on, and one that
// any thread sends on, so that a sender never waits for what the main thread is doing.
#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

#include <sdbus-c++/sdbus-c++.h>

namespace platform::backend {

class Bus {
 public:
  // Connects this process; to be called once, on the main thread. lost is called there when the
  // bus has gone away. Throws sdbus::Error if there is no bus at the address.
  static void open(const std::string& address, std::function<void()> lost);
  // The connection of this process; nullptr in one that was never connected.
  static Bus* current();

  // Whether the caller may use the listener: only the thread that opened the bus may.
  bool isListeningThread() const { return std::this_thread::get_id() == listeningThread_; }
  // To be used in blocks of the main queue or before the run loop turns: the messages that it reads
  // ahead are handled in the next turn.
  sdbus::IConnection& listener() { return *listener_; }

  // These work on any thread and are silent if the bus is gone.
  void emitSignal(const std::string& path, const std::string& interface, const std::string& signal,
                  const std::string& argument);
  void callWithoutReply(const std::string& destination, const std::string& path,
                        const std::string& interface, const std::string& method);
  bool nameHasOwner(const std::string& name);

  // Calls done on the main thread once everything that this process has sent so far, and everything
  // that the bus held then, has arrived here and been handled.
  void whenDelivered(std::function<void()> done);

 private:
  Bus(const std::string& address, std::function<void()> lost);
  // Handles one message that has arrived. Returns true if there was one. What it puts on the main
  // queue runs before the next one is handled, as on the device.
  bool handlePending();
  void flushSender();
  // Runs a use of the sending connection; whatever goes wrong with the bus ends here.
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
