#include "platform/notify_center.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

#import "platform/ios/native_string.h"

namespace platform {
namespace {

struct Registration {
  const DarwinNotifyCenter* side;
  const void* observer;
  DarwinNotifyCenter::Callback callback;
};
using RegistrationRef = std::shared_ptr<const Registration>;

CFNotificationCenterRef native() {
  return CFNotificationCenterGetDarwinNotifyCenter();
}

void deliver(CFNotificationCenterRef center, void* token, CFStringRef name, const void* object,
             CFDictionaryRef userInfo);

// All registrations of the process. Each one is a separate observer in the native center, so that
// removing one never removes others.
class Registry {
 public:
  static Registry& all() {
    static auto* registry = new Registry;
    return *registry;
  }

  void add(Registration registration, const std::string& name) {
    auto added = std::make_shared<const Registration>(std::move(registration));
    {
      std::lock_guard lock(mutex_);
      registrations_.push_back(added);
    }
    CFNotificationCenterAddObserver(native(), added.get(), deliver, (CFStringRef)nativeString(name),
                                    nullptr, CFNotificationSuspensionBehaviorDeliverImmediately);
  }

  template <typename Condition>
  void removeIf(Condition condition) {
    std::vector<RegistrationRef> removed;
    {
      std::lock_guard lock(mutex_);
      const auto isRemoved = [&](const RegistrationRef& entry) { return condition(*entry); };
      std::copy_if(registrations_.begin(), registrations_.end(), std::back_inserter(removed),
                   isRemoved);
      std::erase_if(registrations_, isRemoved);
    }
    for (const auto& entry : removed)
      CFNotificationCenterRemoveEveryObserver(native(), entry.get());
  }

  // Returns nullptr if the registration has been removed, as a notification may arrive after that.
  RegistrationRef find(const void* token) const {
    std::lock_guard lock(mutex_);
    const auto at =
        std::find_if(registrations_.begin(), registrations_.end(),
                     [token](const RegistrationRef& entry) { return entry.get() == token; });
    return at == registrations_.end() ? nullptr : *at;
  }

 private:
  mutable std::mutex mutex_;
  std::vector<RegistrationRef> registrations_;
};

void deliver(CFNotificationCenterRef /*center*/, void* token, CFStringRef name,
             const void* /*object*/, CFDictionaryRef /*userInfo*/) {
  if (const auto entry = Registry::all().find(token)) {
    entry->callback(standardString((NSString*)name));
  }
}

}  // namespace

DarwinNotifyCenter::DarwinNotifyCenter() = default;

DarwinNotifyCenter::~DarwinNotifyCenter() {
  Registry::all().removeIf([this](const Registration& entry) { return entry.side == this; });
}

void DarwinNotifyCenter::addObserver(const void* observer, const std::string& name,
                                     Callback callback) {
  Registry::all().add({this, observer, std::move(callback)}, name);
}

void DarwinNotifyCenter::removeEveryObserver(const void* observer) {
  Registry::all().removeIf([this, observer](const Registration& entry) {
    return entry.side == this && entry.observer == observer;
  });
}

void DarwinNotifyCenter::post(const std::string& name) {
  CFNotificationCenterPostNotification(native(), (CFStringRef)nativeString(name), nullptr, nullptr,
                                       true);
}

}  // namespace platform
