// Fuzzes the home screen's bus: method calls and messages for the library, with arguments of any
// number and type. Each call must be answered.

#include <cstdlib>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include <sdbus-c++/sdbus-c++.h>

#include "fuzz/home_screen.h"
#include "host/control/control_names.h"
#include "platform/linux/bus/darwin_bus_names.h"

namespace {

namespace service = host::service;
namespace darwin = platform::backend::darwin;

// All methods except stop.
constexpr const char* methods[] = {service::method::lock,
                                   service::method::home,
                                   service::method::openApp,
                                   service::method::closeApp,
                                   service::method::displayOn,
                                   service::method::displayOff,
                                   service::method::rotate,
                                   service::method::advance,
                                   service::method::settle,
                                   service::method::status,
                                   service::method::screenshot,
                                   service::method::pixels,
                                   "Nothing"};

// Reads the input from front to back. After its end, reads zeros.
class Source {
 public:
  Source(const std::uint8_t* data, std::size_t size) : data_(data), end_(data + size) {}

  bool isEmpty() const { return data_ == end_; }
  std::uint8_t byte() { return isEmpty() ? 0 : *data_++; }
  std::int64_t number() {
    std::uint64_t value = 0;
    for (int count = byte() % 9; count > 0; --count) value = value << 8 | byte();
    return static_cast<std::int64_t>(value);
  }
  std::string text() {
    std::string text;
    for (int count = byte(); count > 0; --count) text += static_cast<char>(byte());
    return text;
  }

 private:
  const std::uint8_t* data_;
  const std::uint8_t* end_;
};

void addArgument(sdbus::Message& message, Source& source) {
  switch (source.byte() % 6) {
    case 0:
      message << source.number();
      break;
    case 1:
      message << source.text();
      break;
    case 2:
      message << static_cast<double>(source.number());
      break;
    case 3:
      message << (source.byte() % 2 == 1);
      break;
    case 4:
      message << std::vector<std::string>{source.text(), source.text()};
      break;
    default:
      message << sdbus::Variant(source.number());
      break;
  }
}

class Client {
 public:
  void call(const char* method, Source& source) {
    auto message = proxy_->createMethodCall(service::interface, method);
    addArguments(message, source);
    bool isAnswered = false;
    const auto call = proxy_->callMethod(
        message, [&isAnswered](sdbus::MethodReply&, const sdbus::Error*) { isAnswered = true; });
    while (!isAnswered && call.isPending()) {
      fuzz::settle();
      connection_->processPendingRequest();
    }
  }

  void post(Source& source) {
    auto signal = notifier_->createSignal(darwin::interface, darwin::signal);
    addArguments(signal, source);
    notifier_->emitSignal(signal);
  }

 private:
  static void addArguments(sdbus::Message& message, Source& source) {
    for (int count = source.byte() % 4; count > 0; --count) addArgument(message, source);
  }

  std::unique_ptr<sdbus::IConnection> connection_ =
      sdbus::createSessionBusConnectionWithAddress(fuzz::busAddress());
  std::unique_ptr<sdbus::IProxy> proxy_ =
      sdbus::createProxy(*connection_, service::busName, service::path);
  std::unique_ptr<sdbus::IObject> notifier_ = sdbus::createObject(*connection_, darwin::path);
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static Client client;
  Source source(data, size);
  while (!source.isEmpty()) {
    const std::size_t index = source.byte() % (std::size(methods) + 1);
    try {
      if (index < std::size(methods)) {
        client.call(methods[index], source);
      } else {
        client.post(source);
      }
    } catch (const sdbus::Error&) {
      // The message could not be sent.
    }
  }
  fuzz::settle();
  return 0;
}
