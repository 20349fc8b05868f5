// The Darwin notify center: notifications that consist of a name only and reach every process of
// the device. Any thread; callbacks run on the main thread, in the order of registration. All
// failures are silent.
#pragma once

#include <functional>
#include <string>

namespace platform {

// One set of registrations. Every object in a process gets all notifications, but
// removeEveryObserver only affects registrations that were made through the same object. So a part
// of a program that calls it with nullptr does not remove what other parts have registered without
// an observer.
class DarwinNotifyCenter {
 public:
  using Callback = std::function<void(const std::string& name)>;

  DarwinNotifyCenter();
  // Removes all registrations, as removeEveryObserver does.
  ~DarwinNotifyCenter();

  // Calls callback whenever name is posted, immediately, even if the process is suspended. observer
  // only identifies the registration for removeEveryObserver and is never dereferenced. Made off
  // the main thread on Linux, a registration takes effect in the main run loop's next turn.
  void addObserver(const void* observer, const std::string& name, Callback callback);
  // Removes the registrations that were made with this observer; does nothing if there are none. A
  // callback that the main thread has begun may still be running when this returns.
  void removeEveryObserver(const void* observer);

  // Posts a notification. It is lost if no process observes the name.
  static void post(const std::string& name);
};

}  // namespace platform
