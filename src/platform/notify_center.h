// The Darwin notify center: names without payload that reach every process of the device. Any
// thread; callbacks run on the main thread, in the order of registration. Posting with nobody there
// is no error.
#pragma once

#include <functional>
#include <memory>
#include <string>

namespace platform {

// One side's registrations. Several sides of one process share the notifications but not the
// registrations: removeEveryObserver reaches only those made through the same object, so that
// observers without identity (nullptr) of different sides stay apart.
class DarwinNotifyCenter {
 public:
  using Callback = std::function<void(const std::string& name)>;

  DarwinNotifyCenter();
  ~DarwinNotifyCenter();

  // observer is an identity only and is never dereferenced. Delivery is immediate, also while the
  // process is suspended.
  void addObserver(const void* observer, const std::string& name, Callback callback);
  // A callback that another thread has begun may still be running when this returns.
  void removeEveryObserver(const void* observer);

  static void post(const std::string& name);
};

}  // namespace platform
