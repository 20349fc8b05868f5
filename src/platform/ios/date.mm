#include "platform/date.h"

#import "platform/ios/native_string.h"

namespace platform {

std::string currentDateDescription() {
  return standardString([[NSDate date] description]);
}

}  // namespace platform
