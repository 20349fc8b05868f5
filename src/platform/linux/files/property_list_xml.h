// Reads and writes the XML form of property lists. Only the values of the root container are
// parsed; nested ones are kept as markup. Any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace platform::backend {

struct PropertyListValue {
  bool isString = false;
  // The text of a string, or the markup of any other value.
  std::string content;
};

struct PropertyListEntry {
  // "" in an array.
  std::string key;
  PropertyListValue value;
};

struct PropertyListContents {
  bool isDictionary = false;
  std::vector<PropertyListEntry> entries;
};

// Returns nothing if the bytes are not a list whose root is a dictionary or an array. Ignores bytes
// around the list, comments, and characters that XML does not allow. Bytes that are not UTF-8 are
// read as Latin 1. Takes time and memory in proportion to the size. Throws std::bad_alloc.
std::optional<PropertyListContents> parsePropertyListXml(std::span<const std::uint8_t> xml);

// Returns the list as a document in valid XML, as validXml makes it.
std::string propertyListXml(const PropertyListContents& list);

// Returns the text without characters that XML does not allow, and with U+FFFD in place of bytes
// that are not UTF-8.
std::string validXml(const std::string& text);

}  // namespace platform::backend
