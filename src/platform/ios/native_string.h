// Texts between the portable code, in UTF-8, and the platform. Any thread.
#pragma once

#include <string>

#import <Foundation/Foundation.h>

namespace platform {

// Autoreleased. A text that is not UTF-8 becomes the empty one, never nil, which most of the
// platform's methods do not bear.
NSString* nativeString(const std::string& text);
// A path; nil if it can name nothing, so that the platform must not be asked: most of its methods
// raise at an empty path, and take one that holds a NUL for its beginning.
NSString* nativePath(const std::string& path);
// "" of nil.
std::string standardString(NSString* text);

}  // namespace platform
