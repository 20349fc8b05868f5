// Property lists on disk, XML or binary when read, XML when written. Any thread; one object is used
// by one thread at a time.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace platform {

// A dictionary whose root and other values survive a change of one key, whatever their types.
class NSMutableDictionary {
 public:
  NSMutableDictionary();
  ~NSMutableDictionary();
  NSMutableDictionary(NSMutableDictionary&&) noexcept;
  NSMutableDictionary& operator=(NSMutableDictionary&&) noexcept;

  // Nothing if the file is missing, is no property list, or its root is no dictionary.
  static std::optional<NSMutableDictionary> dictionaryWithContentsOfFile(const std::string& path);
  // Atomically; false if the file stays as it was.
  bool writeToFile(const std::string& path) const;

  // Nothing if the key is absent or its value is not a string.
  std::optional<std::string> stringForKey(const std::string& key) const;
  void setString(const std::string& value, const std::string& key);

 private:
  struct Impl;
  explicit NSMutableDictionary(std::unique_ptr<Impl> impl);
  std::unique_ptr<Impl> impl_;
};

// Nothing if the file is missing, is no property list, or its root is no array. An element that is
// not a string counts as "".
std::optional<std::vector<std::string>> arrayWithContentsOfFile(const std::string& path);
// Atomically; false if the file stays as it was.
bool writeArrayToFile(const std::vector<std::string>& array, const std::string& path);

}  // namespace platform
