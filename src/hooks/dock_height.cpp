#include "hooks/dock_height.h"

#include "platform/string_value.h"
#include "settings/settings_store.h"
#include "threads/exception_barrier.h"

namespace lumora {

platform::CGFloat (*previousDefaultDockHeight)(platform::id self, platform::SEL selector) = nullptr;

platform::CGFloat recordDefaultDockHeight(platform::id self, platform::SEL selector) {
  const platform::CGFloat height = previousDefaultDockHeight(self, selector);
  stoppingExceptions(
      [height] { setPreferencesObjectKey(platform::decimalText(height), "DOCK_HEIGHT"); });
  return height;
}

}  // namespace lumora
