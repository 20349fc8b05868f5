#include "platform/linux/bus/bus.h"

#include <utility>

#include <poll.h>

#include "platform/linux/main_loop/run_loop.h"

namespace platform::backend {
namespace {

using namespace std::chrono_literals;

constexpr auto barrierPath = "/com/brightfen/lumora/Bus";
constexpr auto barrierInterface = "com.brightfen.lumora.Bus";
constexpr auto barrierMethod = "Barrier";

// How long a sender waits while the bus accepts no more messages.
constexpr auto flushTimeout = 1s;
// How long to wait for an answer of the bus.
constexpr auto answerTimeout = 1s;

Bus*& currentBus() {
  static Bus* bus = nullptr;
  return bus;
}

}  // namespace

bool nameHasOwner(sdbus::IConnection& connection, const std::string& name,
                  std::chrono::microseconds timeout) {
  auto daemon = sdbus::createProxy(connection, "org.freedesktop.DBus", "/org/freedesktop/DBus");
  bool owned = false;
  daemon->callMethod("NameHasOwner")
      .onInterface("org.freedesktop.DBus")
      .withTimeout(timeout)
      .withArguments(name)
      .storeResultsTo(owned);
  return owned;
}

// Never closed, because blocks may send while the process exits.
void Bus::open(const std::string& address, std::function<void()> lost) {
  currentBus() = new Bus(address, std::move(lost));
}

Bus* Bus::current() {
  return currentBus();
}

Bus::Bus(const std::string& address, std::function<void()> lost)
    : listener_(sdbus::createSessionBusConnectionWithAddress(address)),
      sender_(sdbus::createSessionBusConnectionWithAddress(address)),
      listenerDescriptor_(listener_->getEventLoopPollData().fd),
      barrierObject_(sdbus::createObject(*listener_, barrierPath)),
      lost_(std::move(lost)) {
  barrierObject_->registerMethod(barrierMethod).onInterface(barrierInterface).implementedAs([this] {
    if (delivered_) std::exchange(delivered_, nullptr)();
  });
  barrierObject_->finishRegistration();
  RunLoop::main().addSource(listenerDescriptor_, [this] { return handlePending(); });
}

bool Bus::handlePending() {
  try {
    return listener_->processPendingRequest();
  } catch (const sdbus::Error&) {
    RunLoop::main().removeSource(listenerDescriptor_);
    lost_();
    return false;
  }
}

void Bus::send(const std::function<void(sdbus::IConnection&)>& use) {
  std::lock_guard lock(senderMutex_);
  try {
    use(*sender_);
    flushSender();
  } catch (const sdbus::Error&) {
    // If the bus is gone, the listener notices it.
  }
}

// What cannot be sent in time is sent with the next message.
void Bus::flushSender() {
  while (sender_->processPendingRequest()) {
  }
  const auto limit = RunLoop::Clock::now() + flushTimeout;
  for (auto data = sender_->getEventLoopPollData(); data.events & POLLOUT;
       data = sender_->getEventLoopPollData()) {
    pollfd descriptor{data.fd, POLLOUT, 0};
    const auto rest = std::chrono::ceil<std::chrono::milliseconds>(limit - RunLoop::Clock::now());
    if (rest.count() <= 0) return;
    poll(&descriptor, 1, static_cast<int>(rest.count()));
    sender_->processPendingRequest();
  }
}

void Bus::emitSignal(const std::string& path, const std::string& interface,
                     const std::string& signal, const std::string& argument) {
  send([&](sdbus::IConnection& connection) {
    auto object = sdbus::createObject(connection, path);
    auto message = object->createSignal(interface, signal);
    message << argument;
    object->emitSignal(message);
  });
}

void Bus::callWithoutReply(const std::string& destination, const std::string& path,
                           const std::string& interface, const std::string& method) {
  send([&](sdbus::IConnection& connection) {
    auto proxy = sdbus::createProxy(connection, destination, path);
    auto call = proxy->createMethodCall(interface, method);
    call.dontExpectReply();
    proxy->callMethod(call);
  });
}

bool Bus::nameHasOwner(const std::string& name) {
  bool owned = false;
  send([&](sdbus::IConnection& connection) {
    owned = backend::nameHasOwner(connection, name, answerTimeout);
  });
  return owned;
}

void Bus::whenDelivered(std::function<void()> done) {
  delivered_ = std::move(done);
  callWithoutReply(listener_->getUniqueName(), barrierPath, barrierInterface, barrierMethod);
}

}  // namespace platform::backend
