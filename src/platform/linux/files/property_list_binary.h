// Reads the binary form of property lists. Any thread.
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace platform::backend {

// Returns true if the bytes start as a binary list does; the rest may be damaged.
bool isBinaryPropertyList(std::span<const std::uint8_t> bytes);

// The library that reads these lists parses them recursively and copies an object once for each
// reference to it, so a small list can exhaust the stack or the memory, or take minutes.
enum class PropertyListCost { Bearable, TooHigh };
// Returns TooHigh for a list that is nested too deeply or that refers to objects too often.
PropertyListCost costOfBinaryPropertyList(std::span<const std::uint8_t> bytes);

// Returns the list as XML, or "" if it is damaged. Requires a list of bearable cost.
std::string xmlOfBinaryPropertyList(std::span<const std::uint8_t> bytes);

}  // namespace platform::backend
