#include "platform/notification_center.h"

#include <string>
#include <vector>

#include "platform/linux/device_events.h"

namespace platform {
namespace {

struct Observer {
  id object;
  SEL selector;
  std::string name;
};

std::vector<Observer>& observers() {
  static auto* list = new std::vector<Observer>;
  return *list;
}

}  // namespace

void NSNotificationCenter_addObserver(id observer, SEL selector, const char* name) {
  observers().push_back({observer, selector, name});
}

void postNotification(const char* name) {
  const std::vector<Observer> called = observers();
  for (const Observer& observer : called) {
    if (observer.name != name) continue;
    IMP code = class_getMethodImplementation(object_getClass(observer.object), observer.selector);
    if (code == nullptr) continue;
    reinterpret_cast<void (*)(id, SEL, id)>(code)(observer.object, observer.selector, nullptr);
  }
}

}  // namespace platform
