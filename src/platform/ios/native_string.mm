#import "platform/ios/native_string.h"

#include <cstring>

namespace platform {

NSString* nativeString(const std::string& text) {
  NSString* native = [[[NSString alloc] initWithBytes:text.data()
                                               length:text.size()
                                             encoding:NSUTF8StringEncoding] autorelease];
  return native == nullptr ? @"" : native;
}

NSString* nativePath(const std::string& path) {
  if (std::strlen(path.c_str()) != path.size()) return nullptr;
  NSString* native = nativeString(path);
  return [native length] == 0 ? nullptr : native;
}

std::string standardString(NSString* text) {
  const char* characters = [text UTF8String];
  if (characters == nullptr) return "";
  return {characters, [text lengthOfBytesUsingEncoding:NSUTF8StringEncoding]};
}

}  // namespace platform
