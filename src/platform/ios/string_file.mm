#include "platform/string_file.h"

#import "platform/ios/native_string.h"

namespace platform {

std::optional<std::string> stringWithContentsOfFile(const std::string& path) {
  NSString* file = nativePath(path);
  NSString* text = file == nullptr ? nullptr
                                   : [NSString stringWithContentsOfFile:file
                                                               encoding:NSUTF8StringEncoding
                                                                  error:nullptr];
  if (text == nullptr) return std::nullopt;
  return standardString(text);
}

bool writeStringToFileAtomically(const std::string& text, const std::string& path) {
  NSString* file = nativePath(path);
  return file != nullptr && [nativeString(text) writeToFile:file
                                                 atomically:YES
                                                   encoding:NSUTF8StringEncoding
                                                      error:nullptr];
}

}  // namespace platform
