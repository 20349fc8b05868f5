// Texts between the portable code, in UTF-8, and the platform. Any thread.
#pragma once

#include <string>

#import <Foundation/Foundation.h>

namespace platform {

// Autoreleased. A text that is not UTF-8 becomes the empty one, never nil, which most of the
// platform's methods do not bear.
NSString* nativeString(const std::string& text);
// "" of nil.
std::string standardString(NSString* text);

}  // namespace platform
