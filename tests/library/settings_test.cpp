#include <limits>
#include <string>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "settings/device_paths.h"
#include "settings/settings_store.h"
#include "tests/fixture/stage.h"

namespace {

using testing_stage::Bytes;
using testing_stage::DeviceRoot;
using testing_stage::SettingsWatch;
using testing_stage::Stage;

constexpr auto preferences = lumora::settingsPath;

template <typename Value>
struct Row {
  const char* key;
  Value (*getter)();
  Value otherwise;
};

// Returns the settings of one type.
template <typename Value>
std::vector<Row<Value>> rowsOf(const std::string& wanted) {
  std::vector<Row<Value>> rows;
  auto add = [&]<typename Other>(const char* type, const char* key, Other (*getter)(), auto value) {
    if constexpr (std::is_same_v<Other, Value>) {
      if (wanted == type) rows.push_back({key, getter, Value(value)});
    }
  };
#define SETTING(type, getter, key, otherwise) add(#type, key, lumora::getter, otherwise);
#include "settings/settings.def"
  return rows;
}

const auto booleans = rowsOf<bool>("Boolean");
const auto integers = rowsOf<std::int32_t>("Integer");
const auto numbers = rowsOf<float>("Number");
const auto lengths = rowsOf<platform::CGFloat>("Length");
const auto modes = rowsOf<std::string>("ScalingMode");
const auto texts = rowsOf<std::string>("Text");

// Stores a string and returns what the getter reads.
template <typename Value>
Value reading(const Row<Value>& row, const std::string& text) {
  Stage::put(row.key, text);
  return row.getter();
}

void expectDefaults() {
  for (const auto& row : booleans) EXPECT_EQ(row.getter(), row.otherwise) << row.key;
  for (const auto& row : integers) EXPECT_EQ(row.getter(), row.otherwise) << row.key;
  for (const auto& row : numbers) EXPECT_EQ(row.getter(), row.otherwise) << row.key;
  for (const auto& row : modes) EXPECT_EQ(row.getter(), row.otherwise) << row.key;
  for (const auto& row : texts) EXPECT_EQ(row.getter(), row.otherwise) << row.key;
  for (const auto& row : lengths) EXPECT_EQ(row.getter(), row.otherwise) << row.key;
}

// Returns a settings file in which every known key has a value of an unexpected type.
std::string listOfOtherTypes() {
  std::string list = "<plist version=\"1.0\"><dict>";
  auto add = [&list](const char* key, const char* value) {
    list += std::string("<key>") + key + "</key>" + value;
  };
  for (const auto& row : booleans) add(row.key, row.otherwise ? "<false/>" : "<true/>");
  for (const auto& row : integers) add(row.key, "<integer>7</integer>");
  for (const auto& row : numbers) add(row.key, "<real>7.5</real>");
  for (const auto& row : modes) add(row.key, "<array><string>FILL</string></array>");
  for (const auto& row : texts) add(row.key, "<dict/>");
  for (const auto& row : lengths) add(row.key, "<data>AAAA</data>");
  return list + "</dict></plist>";
}

TEST(Settings, HaveDefaultsWithoutAUsableFile) {
  const DeviceRoot root;
  expectDefaults();
  const std::string useless[] = {
      "",
      "not a property list",
      "bplist00 but not really",
      "<plist version=\"1.0\"><array><string>ENABLED</string></array></plist>",
      "<plist version=\"1.0\"><dict><key>ENABLED</key>",
      "<plist version=\"1.0\"><dict/></plist>",
      listOfOtherTypes(),
  };
  for (const std::string& contents : useless) {
    SCOPED_TRACE(contents);
    root.write(preferences, contents);
    expectDefaults();
  }
}

TEST(Settings, FallBackToDefaultsForEmptyStrings) {
  const DeviceRoot root;
  for (const auto& row : booleans) EXPECT_EQ(reading(row, ""), row.otherwise) << row.key;
  for (const auto& row : integers) EXPECT_EQ(reading(row, ""), row.otherwise) << row.key;
  for (const auto& row : numbers) EXPECT_EQ(reading(row, ""), row.otherwise) << row.key;
  for (const auto& row : modes) EXPECT_EQ(reading(row, ""), "FIT") << row.key;
  for (const auto& row : texts) EXPECT_EQ(reading(row, ""), "") << row.key;
}

TEST(Settings, ParseBooleansByTheFirstSignificantCharacter) {
  const DeviceRoot root;
  for (const auto& row : booleans) {
    for (const char* text : {"TRUE", "1", "YES", "7", " \t+007", "t", "-y", "0001"}) {
      EXPECT_TRUE(reading(row, text)) << row.key << " " << text;
    }
    for (const char* text : {"FALSE", "0", "NO", "000", "x1", "+ 1", "on", "-"}) {
      EXPECT_FALSE(reading(row, text)) << row.key << " " << text;
    }
  }
}

TEST(Settings, ParseTheLeadingNumberOfAString) {
  const DeviceRoot root;
  for (const auto& row : integers) {
    EXPECT_EQ(reading(row, "abc"), 0) << row.key;
    EXPECT_EQ(reading(row, " -12x"), -12) << row.key;
    EXPECT_EQ(reading(row, "+2.9"), 2) << row.key;
    EXPECT_EQ(reading(row, "99999999999"), 2147483647) << row.key;
    EXPECT_EQ(reading(row, "-99999999999"), -2147483647 - 1) << row.key;
  }
  constexpr float infinity = std::numeric_limits<float>::infinity();
  for (const auto& row : numbers) {
    EXPECT_EQ(reading(row, "2.5"), 2.5F) << row.key;
    EXPECT_EQ(reading(row, "0"), 0.0F) << row.key;
    EXPECT_EQ(reading(row, " -1.5e1 fast"), -15.0F) << row.key;
    EXPECT_EQ(reading(row, ".25"), 0.25F) << row.key;
    EXPECT_EQ(reading(row, "fast"), 0.0F) << row.key;
    EXPECT_EQ(reading(row, "inf"), 0.0F) << row.key;
    EXPECT_EQ(reading(row, "1e999"), infinity) << row.key;
    EXPECT_EQ(reading(row, "1e-999"), 0.0F) << row.key;
    EXPECT_EQ(reading(row, "0." + std::string(400, '0') + "1"), 0.0F) << row.key;
    EXPECT_EQ(reading(row, std::string(400, '9') + "e-1"), infinity) << row.key;
  }
  // It is parsed as a 32-bit float and widened, so it is not the nearest double.
  Stage::put("DOCK_HEIGHT", "83.1");
  EXPECT_EQ(lumora::getDockHeight(), static_cast<double>(83.1F));
}

TEST(Settings, AcceptOnlyExactScalingModeNames) {
  const DeviceRoot root;
  for (const auto& row : modes) {
    EXPECT_EQ(reading(row, "FILL"), "FILL") << row.key;
    EXPECT_EQ(reading(row, "FULLSCREEN"), "FULLSCREEN") << row.key;
    EXPECT_EQ(reading(row, "fill"), "FIT") << row.key;
    EXPECT_EQ(reading(row, "STRETCH"), "FIT") << row.key;
  }
  for (const auto& row : texts) EXPECT_EQ(reading(row, " a <b> & ü "), " a <b> & ü ") << row.key;
}

TEST(Settings, KeepOtherKeysOfAnyTypeOnWriting) {
  const DeviceRoot root;
  root.write(preferences,
             "<plist version=\"1.0\"><dict><key>OTHER</key><array><integer>4</integer></array>"
             "<key>ENABLED</key><string>FALSE</string></dict></plist>");
  Stage::put("WALLPAPER_SET", "TRUE");
  EXPECT_NE(root.read(preferences).find("<integer>4</integer>"), std::string::npos);
  EXPECT_EQ(Stage::stored("ENABLED"), "FALSE");
  EXPECT_EQ(Stage::stored("WALLPAPER_SET"), "TRUE");
}

TEST(Settings, ReplaceADamagedFileOnWriting) {
  const DeviceRoot root;
  root.write(preferences, "<plist><dict><key>ENABLED</key><string>FALSE</str");
  Stage::put("MODE_INDEX", "0");
  EXPECT_EQ(Stage::stored("ENABLED"), std::nullopt);
  EXPECT_EQ(lumora::getModeIndex(), 0);
}

TEST(Settings, KeepTheFileAfterAFailedWrite) {
  const DeviceRoot root;
  Stage::put("MODE_INDEX", "0");
  const auto folder = root(preferences).parent_path();
  std::filesystem::rename(folder, folder.string() + " away");
  Stage::put("MODE_INDEX", "1");
  EXPECT_FALSE(root.has(preferences));
  std::filesystem::rename(folder.string() + " away", folder);
  EXPECT_EQ(lumora::getModeIndex(), 0);
}

TEST(Settings, AccessTheFileOnEveryReadAndWrite) {
  const DeviceRoot root;
  Stage::put("ENABLED", "TRUE");
  SettingsWatch watch(root);
  lumora::getEnabled();
  lumora::getEnabled();
  EXPECT_EQ(watch.take(), (SettingsWatch::Counts{2, 0}));
  Stage::put("ENABLED", "FALSE");
  EXPECT_EQ(watch.take(), (SettingsWatch::Counts{1, 1}));
}

TEST(Settings, RefuseWritesTooLargeToReadBack) {
  const DeviceRoot root;
  Stage::put("ENABLED", "FALSE");
  Stage::put("SAFARI_OBJECT_URL", std::string(std::size_t{17} << 20, 'x'));
  EXPECT_FALSE(lumora::getEnabled());
}

}  // namespace
