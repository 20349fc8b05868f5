#include "cxx_streams.h"

#include <cctype>
#include <cstdint>
#include <cstring>
#include <map>

#include "functions.h"

namespace {

// The facet of a locale that tells the kinds of letters. Its table of functions has one that is
// called: the one for small letters.
struct LetterKinds {
  using Small = char (*)(const LetterKinds*, char);
  const Small* functions;
  long owners;
  const std::uint32_t* kinds;
};

char small(const LetterKinds*, char letter) {
  return static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
}

const LetterKinds* letterKinds(const void*, const void*) {
  constexpr std::uint32_t alphabetic = 0x100, digit = 0x400, space = 0x4000;
  static LetterKinds::Small functions[16];
  static std::uint32_t kinds[256];
  static const LetterKinds facet{functions, 0, kinds};
  for (auto& function : functions) function = small;
  for (int letter = 0; letter < 128; ++letter) {
    kinds[letter] = (std::isalpha(letter) != 0 ? alphabetic : 0) |
                    (std::isdigit(letter) != 0 ? digit : 0) |
                    (std::isspace(letter) != 0 ? space : 0);
  }
  return &facet;
}

// What every stream begins with, and a buffer.
struct Stream {
  const void* functions;
  std::uint32_t format;
  long precision;
  long width;
  std::uint32_t state;
  std::uint32_t exceptions;
  void* buffer;
};

void beginStream(Stream& stream, void* buffer) {
  constexpr std::uint32_t decimalSkippingSpace = 0x1002;
  stream = {stream.functions, decimalSkippingSpace, 6, 0, 0, 0, buffer};
}

struct Buffer {
  using Overflow = int (*)(Buffer*, int);
  const Overflow* functions;
  void* locale;
  char* places[6];
};

void beginBuffer(Buffer& buffer) {
  std::memset(buffer.places, 0, sizeof buffer.places);
}

long putCharacters(Buffer* buffer, const char* text, long count) {
  constexpr int overflow = 13;
  for (long at = 0; at < count; ++at) {
    buffer->functions[overflow](buffer, static_cast<unsigned char>(text[at]));
  }
  return count;
}

struct Sentry {
  bool isGood;
  void* stream;
};

void* beginOutput(Sentry& sentry, void* stream) {
  sentry = {true, stream};
  return &sentry;
}

const std::string traits = "IcNS_11char_traitsIcEEE";

}  // namespace

void* streamFunction(const std::string& name) {
  // A length has another type on 32-bit processors.
  const std::string length = sizeof(void*) == 8 ? "l" : "i";
  static const std::map<std::string, void*> known = {
      {"__ZNSt3__16localeC1Ev", address(same)},
      {"__ZNSt3__16localeC1ERKS0_", address(same)},
      {"__ZNSt3__16localeD1Ev", address(same)},
      {"__ZNKSt3__16locale9use_facetERNS0_2idE", address(letterKinds)},
      {"__ZNKSt3__18ios_base6getlocEv", address(nothing)},
      {"__ZNSt3__18ios_base4initEPv", address(beginStream)},
      {"__ZNSt3__19basic_ios" + traits + "D2Ev", address(same)},
      {"__ZNSt3__113basic_ostream" + traits + "D2Ev", address(same)},
      {"__ZNSt3__113basic_ostream" + traits + "6sentryC1ERS3_", address(beginOutput)},
      {"__ZNSt3__113basic_ostream" + traits + "6sentryD1Ev", address(same)},
      {"__ZNSt3__115basic_streambuf" + traits + "C2Ev", address(beginBuffer)},
      {"__ZNSt3__115basic_streambuf" + traits + "D2Ev", address(same)},
      {"__ZNSt3__115basic_streambuf" + traits + "6xsputnEPKc" + length, address(putCharacters)},
  };
  const auto at = known.find(name);
  return at == known.end() ? nullptr : at->second;
}
