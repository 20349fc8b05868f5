#include "platform/property_list.h"

#include <string>

#include <gtest/gtest.h>
#include <plist/plist.h>

#include "tests/stage.h"

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

// A binary list of so many dictionaries, each the only value of the one before. The marker says how
// many bytes the number of their values takes.
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

TEST(PropertyLists, BinaryOnesAreWrittenBackAsXmlThatEveryProgramReads) {
  const DeviceRoot root;
  auto list = dictionaryOf(root, binaryListOf("a\x02", "two\tparts\x01\x1b"));
  ASSERT_TRUE(list.has_value());
  list->setString("one\x01\n", "b");
  ASSERT_TRUE(list->writeToFile(path));
  std::string xml;
  std::getline(std::ifstream(root(path)), xml, '\0');
  EXPECT_TRUE(xml.starts_with("<?xml"));
  EXPECT_NE(xml.find("<key>a</key>"), std::string::npos);
  const auto written = NSMutableDictionary::dictionaryWithContentsOfFile(path);
  EXPECT_EQ(written->stringForKey("a"), "two\tparts");
  EXPECT_EQ(written->stringForKey("b"), "one\n");
}

TEST(PropertyLists, AByteOrderMarkIsNoPartOfTheList) {
  const DeviceRoot root;
  const auto list =
      dictionaryOf(root, std::string("\xEF\xBB\xBF<plist version=\"1.0\"><dict>"
                                     "<key>a</key><string>1</string></dict></plist>"));
  ASSERT_TRUE(list.has_value());
  EXPECT_EQ(list->stringForKey("a"), "1");
}

TEST(PropertyLists, OnesNestedWithoutEndAreNone) {
  const DeviceRoot root;
  constexpr int levels = 200000;
  const std::string ends = repeated("</array>", levels);
  // Some hide from a reader of tags where their containers end.
  const std::string deep[] = {
      repeated("<dict><key>k</key>", levels) + repeated("</dict>", levels),
      repeated("<array><!--></array>-->", levels) + ends,
      "<!DOCTYPE plist [ " + ends + " ]>" + repeated("<array>", levels),
      repeated("<array x=\"/>\">", levels) + ends,
      repeated("<array><?\"?></array>\"?>", levels) + ends,
  };
  for (const std::string& list : deep) {
    const std::string start = "<plist><dict><key>a</key>";
    EXPECT_FALSE(dictionaryOf(root, start + list + "</dict></plist>").has_value());
    EXPECT_FALSE(dictionaryOf(root, list).has_value());
  }
  for (const unsigned depth : {100U, 30000U, 140000U}) {
    EXPECT_FALSE(dictionaryOf(root, nestedBinaryList(depth)).has_value()) << depth;
    for (const std::uint64_t marker : {0x10, 0x13, 0x14, 0x03}) {
      EXPECT_FALSE(dictionaryOf(root, nestedBinaryList(depth, marker)).has_value()) << marker;
    }
  }
}

TEST(PropertyLists, SoundOnesOfSomeLevelsAreRead) {
  const DeviceRoot root;
  const std::string others = repeated("<key>k</key><dict/>", 200);
  const auto list = dictionaryOf(root, "<plist version=\"1.0\"><dict>" + others +
                                           "<key>a</key><string>1</string></dict></plist>");
  ASSERT_TRUE(list.has_value());
  EXPECT_EQ(list->stringForKey("a"), "1");
  EXPECT_TRUE(dictionaryOf(root, nestedBinaryList(20)).has_value());
  EXPECT_TRUE(dictionaryOf(root, nestedBinaryList(20, 0x10)).has_value());
}

// Such lists once took minutes; the test run's own limit ends a process that takes them again.
TEST(PropertyLists, OnesThatWouldTakeMinutesAreNone) {
  const DeviceRoot root;
  constexpr int count = 1000000;
  EXPECT_FALSE(dictionaryOf(root, repeated("<", count)).has_value());
  EXPECT_FALSE(dictionaryOf(root, repeated("<", count) + ">").has_value());
  EXPECT_FALSE(dictionaryOf(root, "<plist><dict><key>a</key><string>" + repeated("&amp;", count) +
                                      "</string></dict></plist>")
                   .has_value());
}

}  // namespace
