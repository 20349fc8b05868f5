#include "host/home_screen/time_format.h"

#include <algorithm>
#include <string_view>

#include <langinfo.h>
#include <locale.h>

namespace host {
namespace {

// Of the category of times, and of that of characters, which the texts are encoded in. Lives as
// long as the process. The global locale stays, because the libraries in the process share it.
locale_t userLocale() {
  static const locale_t known = [] {
    const locale_t locale = newlocale(LC_TIME_MASK | LC_CTYPE_MASK, "", nullptr);
    return locale == nullptr ? newlocale(LC_ALL_MASK, "C", nullptr) : locale;
  }();
  return known;
}

locale_t englishLocale() {
  static const locale_t known = newlocale(LC_ALL_MASK, "C", nullptr);
  return known;
}

std::string formatted(const std::tm& moment, const char* format, locale_t locale) {
  char text[128];
  return std::string(text, strftime_l(text, sizeof text, format, &moment, locale));
}

bool hasTwelveHours(locale_t locale) {
  const std::string_view format = nl_langinfo_l(T_FMT, locale);
  return format.find("%r") != format.npos || format.find("%I") != format.npos ||
         format.find("%l") != format.npos || format.find("%p") != format.npos;
}

bool isMonthFirst(std::string_view format) {
  if (format.find("%D") != format.npos) return true;
  const std::size_t month = std::min(format.find("%m"), format.find("%b"));
  const std::size_t day = std::min({format.find("%d"), format.find("%e"), format.find("%-d")});
  return month < day;
}

// A date of numbers alone may begin with the year although the language puts the day first.
bool writesMonthFirst(locale_t locale) {
  const std::string_view numbers = nl_langinfo_l(D_FMT, locale);
  const bool beginsWithYear = numbers.starts_with("%Y") || numbers.starts_with("%F");
  return isMonthFirst(beginsWithYear ? nl_langinfo_l(D_T_FMT, locale) : numbers);
}

// Latin, Greek and Cyrillic letters have one or two bytes in UTF-8, the second at most this.
bool isDrawable(const std::string& text) {
  constexpr unsigned char endOfCyrillic = 0xd4;
  return std::ranges::all_of(text, [](unsigned char byte) { return byte < endOfCyrillic; });
}

}  // namespace

std::string timeText(const std::tm& moment) {
  return formatted(moment, hasTwelveHours(userLocale()) ? "%-I:%M" : "%-H:%M", englishLocale());
}

std::string dateText(const std::tm& moment) {
  constexpr auto dayFirst = "%A, %-d %B";
  const locale_t locale = userLocale();
  const bool isUtf8 = std::string_view(nl_langinfo_l(CODESET, locale)) == "UTF-8";
  const bool isPlain = std::string_view(nl_langinfo_l(CODESET, locale)).starts_with("ANSI");
  const std::string text =
      formatted(moment, writesMonthFirst(locale) ? "%A, %B %-d" : dayFirst, locale);
  const bool isReadable = (isUtf8 || isPlain) && isDrawable(text);
  return isReadable ? text : formatted(moment, dayFirst, englishLocale());
}

}  // namespace host
