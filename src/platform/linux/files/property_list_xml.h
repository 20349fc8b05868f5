// The XML form of property lists, read and written as far as the system looks into them: the values
// of the outermost container. Whatever else a list holds is kept as it is. Any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace platform::backend {

struct PropertyListValue {
  bool isString = false;
  // Of a string its text; of anything else its markup.
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

// Returns nothing if the bytes are not a list whose root is a dictionary or an array. What is
// around the list, comments, characters that XML does not have, and bytes that are not UTF-8 do no
// harm: the last are taken for Latin 1. Time and memory are a small multiple of the size. Throws
// std::bad_alloc.
std::optional<PropertyListContents> parsePropertyListXml(std::span<const std::uint8_t> xml);

// Characters that XML cannot hold are left out, and what is not UTF-8 is replaced by U+FFFD.
std::string propertyListXml(const PropertyListContents& list);

// The same for a whole document.
std::string validXml(const std::string& text);

}  // namespace platform::backend
