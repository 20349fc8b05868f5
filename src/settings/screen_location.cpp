#include "settings/screen_location.h"

namespace lumora {
namespace {

constexpr ScreenLocation locations[] = {ScreenLocation::Shared, ScreenLocation::LockScreen,
                                        ScreenLocation::HomeScreen};

}  // namespace

std::string identifierOf(ScreenLocation location) {
  switch (location) {
    case ScreenLocation::Shared:
      return "SHARED";
    case ScreenLocation::LockScreen:
      return "LOCKSCREEN";
    case ScreenLocation::HomeScreen:
      return "HOMESCREEN";
    case ScreenLocation::Unknown:
      break;
  }
  return "";
}

ScreenLocation locationOfIdentifier(const std::string& identifier) {
  for (const ScreenLocation location : locations) {
    if (identifier == identifierOf(location)) return location;
  }
  return ScreenLocation::Unknown;
}

ScreenLocation locationOfTag(int tag) {
  for (const ScreenLocation location : locations) {
    if (tag == static_cast<int>(location)) return location;
  }
  return ScreenLocation::Unknown;
}

}  // namespace lumora
