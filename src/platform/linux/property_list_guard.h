// Tells sound property lists from those that would harm the library that reads them: it takes lists
// apart by recursion, and copies what a binary list refers to again and again.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace platform {

// Larger than any list of the system: one with the delays of half a million frames.
constexpr std::size_t largestPropertyList = std::size_t{1} << 24;

// Whether the bytes are meant to be a binary list, not XML.
bool isBinaryPropertyList(std::span<const std::uint8_t> bytes);

// Whether the bytes, XML or binary, are small and flat enough to be read: with no more than some
// levels (binary) or a thousand containers (XML). A damaged list may pass.
bool isHarmlessPropertyList(std::span<const std::uint8_t> bytes);

}  // namespace platform
