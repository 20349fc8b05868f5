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
  NSString* contents = nativeString(text);
  // It is empty for a text that is not UTF-8, which must not replace the file.
  if (file == nullptr || ([contents length] == 0 && !text.empty())) return false;
  return [contents writeToFile:file atomically:YES encoding:NSUTF8StringEncoding error:nullptr];
}

}  // namespace platform
