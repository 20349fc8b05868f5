#include "platform/messaging_center.h"

#include <algorithm>
#include <map>
#include <mutex>
#include <utility>
#include <vector>

#include "platform/linux/bus/bus.h"
#include "platform/linux/main_loop/run_loop.h"
#include "platform/linux/trace.h"

namespace platform {
using namespace backend;

namespace {

constexpr auto messageInterface = "com.brightfen.lumora.CPDistributedMessagingCenter";

// The centers of a process share a connection, so each one needs its own object path.
std::string objectPath(const std::string& centerName) {
  std::string path = "/" + centerName;
  std::replace(path.begin(), path.end(), '.', '/');
  return path;
}

}  // namespace

struct CPDistributedMessagingCenter::Impl {
  using Targets = std::vector<std::function<void()>>;

  std::string name;
  std::map<std::string, Targets> targets;
  std::vector<std::unique_ptr<sdbus::IObject>> objects;

  void handle(const std::string& message) {
    // Blocks that were queued earlier run first, as on the device. Otherwise a message could arrive
    // between the end of an animation's cycle and the block that starts the next one.
    RunLoop::main().runMainQueue();
    traceMessage("message received: " + message + " at " + name);
    const Targets called = targets[message];
    for (const auto& target : called) target();
  }

  void serve(Bus& bus, const std::string& message) {
    auto object = sdbus::createObject(bus.listener(), objectPath(name));
    object->registerMethod(message).onInterface(messageInterface).implementedAs([this, message] {
      handle(message);
    });
    object->finishRegistration();
    objects.push_back(std::move(object));
  }
};

CPDistributedMessagingCenter::CPDistributedMessagingCenter(std::unique_ptr<Impl> impl)
    : impl_(std::move(impl)) {}
CPDistributedMessagingCenter::~CPDistributedMessagingCenter() = default;

std::shared_ptr<CPDistributedMessagingCenter> CPDistributedMessagingCenter::centerNamed(
    const std::string& name) {
  static auto* mutex = new std::mutex;
  static auto* centers = new std::map<std::string, std::shared_ptr<CPDistributedMessagingCenter>>;
  std::lock_guard lock(*mutex);
  auto& center = (*centers)[name];
  if (!center) {
    auto impl = std::make_unique<Impl>();
    impl->name = name;
    center.reset(new CPDistributedMessagingCenter(std::move(impl)));
  }
  return center;
}

bool CPDistributedMessagingCenter::doesServerExist() const {
  Bus* bus = Bus::current();
  return bus != nullptr && bus->nameHasOwner(impl_->name);
}

void CPDistributedMessagingCenter::runServerOnCurrentThread() {
  Bus* bus = Bus::current();
  if (bus == nullptr) return;
  try {
    bus->listener().requestName(impl_->name);
  } catch (const sdbus::Error&) {
    // Another process owns the name and is the server.
  }
}

void CPDistributedMessagingCenter::registerForMessageName(const std::string& message,
                                                          std::function<void()> target) {
  auto& targets = impl_->targets[message];
  targets.push_back(std::move(target));
  Bus* bus = Bus::current();
  if (bus == nullptr || targets.size() > 1) return;
  try {
    impl_->serve(*bus, message);
  } catch (const sdbus::Error&) {
    // The bus does not allow this name, or is gone: no process can send the message.
  }
}

void CPDistributedMessagingCenter::sendMessageName(const std::string& message) const {
  if (Bus* bus = Bus::current()) {
    traceMessage("message sent: " + message + " to " + impl_->name);
    bus->callWithoutReply(impl_->name, objectPath(impl_->name), messageInterface, message);
  }
}

}  // namespace platform
