// Property lists on disk: XML or binary when read, XML when written. Any thread; one object must
// not be used by two threads at the same time. Nothing here throws for a file that is missing,
// damaged or not writable.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace platform {

// A dictionary of which only strings can be read and changed. Other values are kept, whatever their
// types.
class NSMutableDictionary {
 public:
  NSMutableDictionary();
  ~NSMutableDictionary();
  NSMutableDictionary(NSMutableDictionary&&) noexcept;
  NSMutableDictionary& operator=(NSMutableDictionary&&) noexcept;

  // Returns nothing if the file is missing, is not a property list, has a root that is not a
  // dictionary or, on Linux, is larger than 2 MiB or too costly to parse.
  static std::optional<NSMutableDictionary> dictionaryWithContentsOfFile(const std::string& path);
  // Replaces the file in a single rename. Returns false, with the file unchanged, if it cannot be
  // written or its directory does not exist. If the file has been written by others since this
  // dictionary was read from it, their changes to other keys are kept on Linux and lost on a
  // device.
  bool writeToFile(const std::string& path) const;

  // Returns nothing if the key is missing or its value is not a string.
  std::optional<std::string> stringForKey(const std::string& key) const;
  // Sets a key, whatever its value was before. Requires UTF-8.
  void setString(const std::string& value, const std::string& key);

 private:
  struct Impl;
  explicit NSMutableDictionary(std::unique_ptr<Impl> impl);
  std::unique_ptr<Impl> impl_;
};

// Returns the array's elements, with "" for each one that is not a string. Returns nothing if the
// file is missing, is not a property list, has a root that is not an array or, on Linux, is larger
// than 16 MiB or too costly to parse.
std::optional<std::vector<std::string>> arrayWithContentsOfFile(const std::string& path);
// Replaces the file in a single rename. Returns false, with the file unchanged, if it cannot be
// written or its directory does not exist. Requires UTF-8.
bool writeArrayToFile(const std::vector<std::string>& array, const std::string& path);

}  // namespace platform
