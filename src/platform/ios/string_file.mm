#include "platform/string_file.h"

#import "platform/ios/native_string.h"

namespace platform {

std::optional<std::string> stringWithContentsOfFile(const std::string& path) {
  NSString* text = [NSString stringWithContentsOfFile:nativeString(path)
                                             encoding:NSUTF8StringEncoding
                                                error:nullptr];
  if (text == nullptr) return std::nullopt;
  return standardString(text);
}

bool writeStringToFileAtomically(const std::string& text, const std::string& path) {
  return [nativeString(text) writeToFile:nativeString(path)
                              atomically:YES
                                encoding:NSUTF8StringEncoding
                                   error:nullptr];
}

}  // namespace platform
