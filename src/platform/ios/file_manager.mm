#include "platform/file_manager.h"

#import "platform/ios/native_string.h"

namespace platform {
namespace {

NSFileManager* manager() {
  return [NSFileManager defaultManager];
}

}  // namespace

std::string lastPathComponent(const std::string& path) {
  return standardString([nativeString(path) lastPathComponent]);
}

std::string stringByDeletingPathExtension(const std::string& path) {
  return standardString([nativeString(path) stringByDeletingPathExtension]);
}

bool fileExistsAtPath(const std::string& path) {
  NSString* native = nativePath(path);
  return native != nullptr && [manager() fileExistsAtPath:native];
}

bool fileExistsAtPath(const std::string& path, bool& isDirectory) {
  NSString* native = nativePath(path);
  BOOL answer = NO;
  if (native == nullptr || ![manager() fileExistsAtPath:native isDirectory:&answer]) return false;
  isDirectory = answer;
  return true;
}

bool createDirectoryAtPath(const std::string& path) {
  NSString* native = nativePath(path);
  return native != nullptr && [manager() createDirectoryAtPath:native
                                   withIntermediateDirectories:YES
                                                    attributes:nullptr
                                                         error:nullptr];
}

bool removeItemAtPath(const std::string& path) {
  NSString* native = nativePath(path);
  return native != nullptr && [manager() removeItemAtPath:native error:nullptr];
}

bool moveItemAtPath(const std::string& path, const std::string& target) {
  NSString* from = nativePath(path);
  NSString* to = nativePath(target);
  return from != nullptr && to != nullptr &&
         [manager() moveItemAtPath:from toPath:to error:nullptr];
}

bool copyItemAtPath(const std::string& path, const std::string& target) {
  NSString* from = nativePath(path);
  NSString* to = nativePath(target);
  return from != nullptr && to != nullptr &&
         [manager() copyItemAtPath:from toPath:to error:nullptr];
}

}  // namespace platform
