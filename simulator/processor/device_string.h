// A string of the device's C++ library, whose layout is another than that of this program's own.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

// Those created here are always long strings, whose
// characters are stored elsewhere. The length is before the mark of a long string on 64-bit
// processors, and after it on 32-bit ones.
class DeviceString {
 public:
  explicit DeviceString(const std::string& text) { set(text); }
  // With this constructor the class is returned in memory, like the device's.
  DeviceString(const DeviceString& other) { set(other.text()); }

  std::string text() const {
    if (isLong()) return {characters(), words_[1]};
    const auto* bytes = reinterpret_cast<const unsigned char*>(words_);
    return is64Bit ? std::string(reinterpret_cast<const char*>(bytes), bytes[23] & 0x7f)
                   : std::string(reinterpret_cast<const char*>(bytes) + 1, bytes[0] >> 1);
  }

  // room: for how many characters there is room at least.
  void set(const std::string& text, std::size_t room = 0) {
    room = (std::max(room, text.size()) | 15) + 1;
    auto* copy = static_cast<char*>(std::calloc(room, 1));
    std::memcpy(copy, text.data(), text.size());
    words_[is64Bit ? 0 : 2] = reinterpret_cast<std::uintptr_t>(copy);
    words_[1] = text.size();
    words_[is64Bit ? 2 : 0] = room | longMark;
  }

 private:
  static constexpr bool is64Bit = sizeof(void*) == 8;
  static constexpr std::uintptr_t longMark = is64Bit ? ~(~std::uintptr_t{0} >> 1) : 1;

  bool isLong() const { return (words_[is64Bit ? 2 : 0] & longMark) != 0; }
  const char* characters() const { return reinterpret_cast<const char*>(words_[is64Bit ? 0 : 2]); }

  std::uintptr_t words_[3];
};
