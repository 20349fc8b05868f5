#include "platform/property_list.h"

#include <string>

#include <gtest/gtest.h>
#include <plist/plist.h>

#include "tests/fixture/stage.h"

namespace {

using platform::NSMutableDictionary;
using testing_stage::Bytes;
using testing_stage::DeviceRoot;

constexpr auto path = "/list.plist";

template <typename Contents>
std::optional<NSMutableDictionary> dictionaryOf(const DeviceRoot& root, const Contents& contents) {
  root.write(path, contents);
  return NSMutableDictionary::dictionaryWithContentsOfFile(path);
}

std::string repeated(const std::string& text, int count) {
  std::string result;
  for (int each = 0; each < count; ++each) result += text;
  return result;
}

Bytes binaryListOf(const char* key, const char* value) {
  plist_t list = plist_new_dict();
  plist_dict_set_item(list, key, plist_new_string(value));
  char* bytes = nullptr;
  std::uint32_t size = 0;
  plist_to_bin(list, &bytes, &size);
  Bytes contents(bytes, bytes + size);
  plist_to_bin_free(bytes);
  plist_free(list);
  return contents;
}

// Returns a binary list of nested dictionaries, each the only value of the one before. The marker
// determines how many bytes the count of their values takes.
Bytes nestedBinaryList(unsigned levels, std::uint64_t countMarker = 0) {
  Bytes list{'b', 'p', 'l', 'i', 's', 't', '0', '0'};
  std::vector<std::size_t> offsets;
  auto add = [&list](std::uint64_t value, int bytes) {
    while (bytes-- > 0)
      list.push_back(bytes < 8 ? static_cast<std::uint8_t>(value >> 8 * bytes) : 0);
  };
  for (unsigned level = 0; level < levels; ++level) {
    offsets.push_back(list.size());
    add(countMarker == 0 ? 0xD1 : 0xDF, 1);
    if (countMarker != 0) {
      add(countMarker, 1);
      add(1, 1 << (countMarker & 0xF));
    }
    add(levels, 3);
    add(level + 1, 3);
  }
  offsets.push_back(list.size());
  add(0x5161, 2);
  const std::size_t table = list.size();
  for (const std::size_t offset : offsets) add(offset, 3);
  add(0, 6);
  add(0x0303, 2);
  add(offsets.size(), 8);
  add(0, 8);
  add(table, 8);
  return list;
}

// Returns a binary dictionary whose only value is an array that refers many times to one string of
// this length.
Bytes binaryListReferringTo(std::size_t length, unsigned times) {
  Bytes list{'b', 'p', 'l', 'i', 's', 't', '0', '0'};
  std::vector<std::size_t> offsets;
  auto add = [&list](std::uint64_t value, int bytes) {
    while (bytes-- > 0) list.push_back(static_cast<std::uint8_t>(value >> 8 * bytes));
  };
  auto begin = [&](unsigned type, std::size_t count) {
    offsets.push_back(list.size());
    add(type << 4 | 0xF, 1);
    add(0x12, 1);
    add(count, 4);
  };
  begin(0xD, 1);
  add(0x0102, 2);
  begin(0x5, 1);
  add('k', 1);
  begin(0xA, times);
  for (unsigned each = 0; each < times; ++each) add(3, 1);
  begin(0x5, length);
  list.insert(list.end(), length, 'x');
  const std::size_t table = list.size();
  for (const std::size_t offset : offsets) add(offset, 4);
  add(0, 6);
  add(0x0401, 2);
  for (const std::uint64_t field : {offsets.size(), std::size_t{0}, table}) add(field, 8);
  return list;
}

TEST(PropertyLists, AreConvertedFromBinaryToValidXml) {
  const DeviceRoot root;
  auto list = dictionaryOf(root, binaryListOf("a\x02", "two\tparts\x01\x1b"));
  ASSERT_TRUE(list.has_value());
  list->setString("one\x01\n", "b");
  ASSERT_TRUE(list->writeToFile(path));
  const std::string xml = root.read(path);
  EXPECT_TRUE(xml.starts_with("<?xml"));
  EXPECT_NE(xml.find("<key>a</key>"), std::string::npos);
  const auto written = NSMutableDictionary::dictionaryWithContentsOfFile(path);
  EXPECT_EQ(written->stringForKey("a"), "two\tparts");
  EXPECT_EQ(written->stringForKey("b"), "one\n");
}

std::string listWith(const std::string& other) {
  return "<plist version=\"1.0\"><dict><key>other</key>" + other +
         "<key>a</key><string>1</string></dict></plist>";
}

// Changes one key as the settings do, starting with an empty list if the file cannot be read.
bool changeOneKey() {
  auto list = NSMutableDictionary::dictionaryWithContentsOfFile(path);
  if (!list) list.emplace();
  list->setString("2", "a");
  return list->writeToFile(path);
}

TEST(PropertyLists, KeepOtherKeysWhenOneChanges) {
  const DeviceRoot root;
  constexpr int levels = 50000;
  const std::string others[] = {
      repeated("<array><dict><key>k</key>", levels) + "<true></true>" +
          repeated("</dict></array>", levels),
      "<array>" + repeated("<dict></dict>", 20000) + "</array>",
      "<string>" + repeated("&amp;", 60000) + "</string>",
      "<array><real>0.10</real><date>2024-01-02T03:04:05Z</date><data>AA\n==</data></array>",
  };
  for (const std::string& other : others) {
    auto list = dictionaryOf(root, listWith(other));
    ASSERT_TRUE(list.has_value()) << other.substr(0, 40);
    EXPECT_EQ(list->stringForKey("a"), "1");
    EXPECT_TRUE(changeOneKey());
    EXPECT_NE(root.read(path).find(other), std::string::npos) << other.substr(0, 40);
    EXPECT_EQ(NSMutableDictionary::dictionaryWithContentsOfFile(path)->stringForKey("a"), "2");
  }
}

TEST(PropertyLists, AreReadInUtf8AndUtf16) {
  const DeviceRoot root;
  EXPECT_EQ(dictionaryOf(root, "\xEF\xBB\xBF" + listWith("<true/>"))->stringForKey("a"), "1");
  std::string utf16 = "\xFF\xFE";
  for (const char letter : listWith("<true/>")) utf16 += {letter, '\0'};
  EXPECT_EQ(dictionaryOf(root, utf16)->stringForKey("a"), "1");
}

// Otherwise a change of one key would lose the others.
TEST(PropertyLists, AreReadEvenIfNotStrictXml) {
  const DeviceRoot root;
  const std::string header = "<?xml version=\"1.0\" encoding=\"windows-1252\"?>";
  const std::string sloppy[] = {
      "\n <?xml version=\"1.0\"?>" + listWith("<true/>"),
      listWith("<true/>") + std::string("\0\0junk <", 8),
      listWith("<!-- a -- b --><true/>"),
      listWith("<string>a\x01&#1;&#x1f;b</string>"),
      listWith(std::string("<string>a\0b</string>", 20)),
      listWith("<string>caf\xE9</string>"),
      header + listWith("<string>caf\xE9</string>"),
  };
  for (const std::string& contents : sloppy) {
    auto list = dictionaryOf(root, contents);
    ASSERT_TRUE(list.has_value()) << contents;
    EXPECT_EQ(list->stringForKey("a"), "1") << contents;
    list->setString("2", "b");
    ASSERT_TRUE(list->writeToFile(path));
    EXPECT_EQ(NSMutableDictionary::dictionaryWithContentsOfFile(path)->stringForKey("a"), "1");
  }
  EXPECT_EQ(dictionaryOf(root, sloppy[6])->stringForKey("other"), "caf\xC3\xA9");
}

TEST(PropertyLists, AreRejectedIfDamaged) {
  const DeviceRoot root;
  for (const char* damage :
       {"<true/><false/>", "<key>k</key>", "<string>a<b/></string>", "<color/>", "text", "&x;",
        "<dict><key>k</key></dict>", "<array><key>k</key></array>", "<dict><true/></dict>", ""}) {
    EXPECT_FALSE(dictionaryOf(root, listWith(damage)).has_value()) << damage;
  }
  const std::string entity = "<!DOCTYPE plist [<!ENTITY x \"much of little\">]>";
  EXPECT_FALSE(dictionaryOf(root, entity + listWith("<string>&x;</string>")).has_value());
  EXPECT_FALSE(dictionaryOf(root, repeated("<", 1000000)).has_value());
  EXPECT_FALSE(dictionaryOf(root, std::string("<other/>")).has_value());
}

// Reading such lists would take minutes or all memory. Their contents are not lost, because a list
// that is not read is not replaced.
TEST(PropertyLists, AreNeitherReadNorReplacedIfTooExpensive) {
  const DeviceRoot root;
  auto isLeftAlone = [&root](const auto& contents) {
    const bool isRead = dictionaryOf(root, contents).has_value();
    return !isRead && !changeOneKey() &&
           root.read(path) == std::string(contents.begin(), contents.end());
  };
  EXPECT_TRUE(isLeftAlone(listWith("<string>" + repeated("x", 3000000) + "</string>")));
  for (const unsigned depth : {1000U, 140000U}) {
    for (const std::uint64_t marker : {0x00, 0x10, 0x13, 0x14, 0x03}) {
      EXPECT_TRUE(isLeftAlone(nestedBinaryList(depth, marker))) << depth << " " << marker;
    }
  }
  EXPECT_TRUE(isLeftAlone(binaryListReferringTo(std::size_t{1} << 19, 3000)));
  EXPECT_TRUE(dictionaryOf(root, binaryListReferringTo(1000, 30)).has_value());
  EXPECT_TRUE(dictionaryOf(root, nestedBinaryList(20, 0x10)).has_value());
}

}  // namespace
