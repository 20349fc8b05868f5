// Converts strings between the portable code, which uses UTF-8, and the platform. Any thread.
#pragma once

#include <string>

#import <Foundation/Foundation.h>

namespace platform {

// Returns an autoreleased string, never nil, which most platform methods do not accept. Returns an
// empty one if text is not UTF-8.
NSString* nativeString(const std::string& text);
// Returns an autoreleased path. Returns nil if the path is empty, contains a NUL or is not UTF-8,
// and so cannot name a file: most platform methods raise an exception for an empty path, and ignore
// everything after a NUL.
NSString* nativePath(const std::string& path);
// Returns "" for nil.
std::string standardString(NSString* text);

}  // namespace platform
