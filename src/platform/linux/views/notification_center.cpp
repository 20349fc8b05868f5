#include "platform/notification_center.h"

#include <string>
#include <vector>

#include "platform/linux/views/notification_center.h"

namespace platform {
using namespace backend;

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

void backend::postNotification(const char* name) {
  const std::vector<Observer> called = observers();
  for (const Observer& observer : called) {
    if (observer.name != name) continue;
    IMP code = class_getMethodImplementation(object_getClass(observer.object), observer.selector);
    if (code == nullptr) continue;
    reinterpret_cast<void (*)(id, SEL, id)>(code)(observer.object, observer.selector, nullptr);
  }
}

}  // namespace platform
