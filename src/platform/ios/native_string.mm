#import "platform/ios/native_string.h"

namespace platform {

NSString* nativeString(const std::string& text) {
  NSString* native = [[[NSString alloc] initWithBytes:text.data()
                                               length:text.size()
                                             encoding:NSUTF8StringEncoding] autorelease];
  return native == nullptr ? @"" : native;
}

std::string standardString(NSString* text) {
  const char* characters = [text UTF8String];
  if (characters == nullptr) return "";
  return {characters, [text lengthOfBytesUsingEncoding:NSUTF8StringEncoding]};
}

}  // namespace platform
