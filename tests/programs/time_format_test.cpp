#include "host/home_screen/time_format.h"

#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <ostream>
#include <string>

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

struct Case {
  const char* locale;
  const char* charmap;
  const char* time;
  const char* date;
};

void PrintTo(const Case& each, std::ostream* stream) {
  *stream << each.locale;
}

// A folder with one locale, in which this process finds it.
class TimeFormat : public testing::TestWithParam<Case> {
 protected:
  TimeFormat() {
    std::string name = (fs::temp_directory_path() / "lumora-test-XXXXXX").string();
    folder_ = mkdtemp(name.data());
    setenv("LOCPATH", folder_.c_str(), 1);
    setenv("LC_ALL", GetParam().locale, 1);
  }
  ~TimeFormat() override { fs::remove_all(folder_); }

  bool makeLocale() const {
    const std::string command = std::string("localedef -i ") + GetParam().locale + " -f " +
                                GetParam().charmap + " " + (folder_ / GetParam().locale).string() +
                                " 2>/dev/null";
    return std::system(command.c_str()) == 0;
  }

 private:
  fs::path folder_;
};

TEST_P(TimeFormat, FollowsTheLocale) {
  const bool isBuiltIn = std::string(GetParam().locale) == "C";
  if (!isBuiltIn && !makeLocale()) GTEST_SKIP() << "needs localedef and its sources";
  std::tm evening{};
  evening.tm_hour = 21;
  evening.tm_min = 5;
  evening.tm_wday = 2;
  evening.tm_mday = 9;
  EXPECT_EQ(host::timeText(evening), GetParam().time);
  EXPECT_EQ(host::dateText(evening), GetParam().date);
}

// Of the last two, one has no letters in the fonts and one another encoding.
INSTANTIATE_TEST_SUITE_P(Locales, TimeFormat,
                         testing::Values(Case{"C", "", "21:05", "Tuesday, January 9"},
                                         Case{"en_US", "UTF-8", "9:05", "Tuesday, January 9"},
                                         Case{"de_DE", "UTF-8", "21:05", "Dienstag, 9 Januar"},
                                         Case{"sv_SE", "UTF-8", "21:05", "tisdag, 9 januari"},
                                         Case{"he_IL", "UTF-8", "21:05", "Tuesday, 9 January"},
                                         Case{"fr_FR", "ISO-8859-1", "21:05",
                                              "Tuesday, 9 January"}),
                         [](const auto& each) { return std::string(each.param.locale); });

}  // namespace
