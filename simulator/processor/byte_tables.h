// Reads numbers from the tables of compiled code, which must be valid.
#pragma once

#include <cstdint>
#include <cstring>

template <typename Number>
Number read(const std::uint8_t* at) {
  Number number;
  std::memcpy(&number, at, sizeof number);
  return number;
}

inline std::uint64_t unsignedLeb(const std::uint8_t*& at) {
  std::uint64_t number = 0;
  for (int shift = 0;; shift += 7) {
    number |= std::uint64_t{*at & 0x7fU} << shift;
    if ((*at++ & 0x80) == 0) return number;
  }
}

inline std::int64_t signedLeb(const std::uint8_t*& at) {
  std::uint64_t number = 0;
  int shift = 0;
  std::uint8_t byte = 0;
  do {
    byte = *at++;
    number |= std::uint64_t{byte & 0x7fU} << shift;
    shift += 7;
  } while ((byte & 0x80) != 0);
  if ((byte & 0x40) != 0 && shift < 64) number |= ~std::uint64_t{0} << shift;
  return static_cast<std::int64_t>(number);
}
