#include "command_line/terminal.h"

#include <cstdio>
#include <iterator>

#include <unistd.h>
#include <utf8cpp/utf8.h>

namespace command_line {
namespace {

bool isControl(std::uint32_t character) {
  constexpr std::uint32_t firstPrintable = 0x20;
  constexpr std::uint32_t deletion = 0x7F;
  constexpr std::uint32_t firstPrintableBeyond = 0xA0;
  if (character == '\n' || character == '\t') return false;
  return character < firstPrintable || (character >= deletion && character < firstPrintableBeyond);
}

}  // namespace

std::string printable(const std::string& text, int descriptor) {
  if (!isatty(descriptor)) return text;
  std::string valid;
  utf8::replace_invalid(text.begin(), text.end(), std::back_inserter(valid));
  std::string result;
  for (auto at = valid.begin(); at != valid.end();) {
    const auto start = at;
    const std::uint32_t character = utf8::unchecked::next(at);
    if (!isControl(character)) {
      result.append(start, at);
      continue;
    }
    char escape[8];
    std::snprintf(escape, sizeof escape, "\\x%02x", static_cast<unsigned>(character));
    result += escape;
  }
  return result;
}

}  // namespace command_line
