// The binary form of property lists.
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace platform::backend {

bool isBinaryPropertyList(std::span<const std::uint8_t> bytes);

// What the library that reads such lists would have to do for one. It takes them apart by recursion
// and copies an object as often as it is referred to.
enum class PropertyListCost { Bearable, TooHigh };
PropertyListCost costOfBinaryPropertyList(std::span<const std::uint8_t> bytes);

// The same list in XML; "" if it is damaged. Only for lists of bearable cost.
std::string xmlOfBinaryPropertyList(std::span<const std::uint8_t> bytes);

}  // namespace platform::backend
