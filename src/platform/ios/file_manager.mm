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
  return [manager() fileExistsAtPath:nativeString(path)];
}

bool fileExistsAtPath(const std::string& path, bool& isDirectory) {
  BOOL answer = NO;
  if (![manager() fileExistsAtPath:nativeString(path) isDirectory:&answer]) return false;
  isDirectory = answer;
  return true;
}

bool createDirectoryAtPath(const std::string& path) {
  return [manager() createDirectoryAtPath:nativeString(path)
              withIntermediateDirectories:YES
                               attributes:nullptr
                                    error:nullptr];
}

bool removeItemAtPath(const std::string& path) {
  return [manager() removeItemAtPath:nativeString(path) error:nullptr];
}

bool moveItemAtPath(const std::string& path, const std::string& target) {
  return [manager() moveItemAtPath:nativeString(path) toPath:nativeString(target) error:nullptr];
}

bool copyItemAtPath(const std::string& path, const std::string& target) {
  return [manager() copyItemAtPath:nativeString(path) toPath:nativeString(target) error:nullptr];
}

}  // namespace platform
