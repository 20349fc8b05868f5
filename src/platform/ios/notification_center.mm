#include "platform/notification_center.h"

#import "platform/ios/native_string.h"

namespace platform {

void NSNotificationCenter_addObserver(id observer, SEL selector, const char* name) {
  [[NSNotificationCenter defaultCenter] addObserver:(::id)observer
                                           selector:(::SEL)selector
                                               name:nativeString(name)
                                             object:nullptr];
}

}  // namespace platform
