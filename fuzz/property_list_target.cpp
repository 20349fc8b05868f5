// Fuzzes the property-list reader and the conversion of values. A list that can be read must, after
// a change and writing it back, be readable and contain the change.

#include <cstdlib>

#include "fuzz/device.h"
#include "platform/property_list.h"
#include "platform/string_value.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using platform::NSMutableDictionary;
  constexpr auto path = "/lists/list.plist";
  fuzz::store(data, size, path);
  platform::arrayWithContentsOfFile(path);
  auto list = NSMutableDictionary::dictionaryWithContentsOfFile(path);
  if (!list) return 0;
  if (const auto value = list->stringForKey("SHARED_GIF_SPEED")) {
    platform::floatValue(*value);
    platform::intValue(*value);
    platform::boolValue(*value);
  }
  list->setString("FALSE", "ENABLED");
  if (!list->writeToFile(path)) return 0;
  const auto again = NSMutableDictionary::dictionaryWithContentsOfFile(path);
  if (!again || again->stringForKey("ENABLED") != "FALSE") std::abort();
  return 0;
}
