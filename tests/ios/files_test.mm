// Files, strings and property lists of the device, through its own backend.

#import <Foundation/Foundation.h>
#import <Foundation/NSDebug.h>
#include <gtest/gtest.h>

#include "platform/data.h"
#include "platform/file_manager.h"
#include "platform/property_list.h"
#include "platform/string_file.h"
#include "platform/string_value.h"
#include "settings/settings_store.h"

namespace {

constexpr auto folder = "/var/mobile/Library/Lumora";
const std::string file = std::string(folder) + "/a.txt";
constexpr auto settings = "/var/mobile/Library/Preferences/com.brightfen.lumorapreferences.plist";

TEST(Files, AreCreatedMovedCopiedAndRemoved) {
  EXPECT_FALSE(platform::writeStringToFileAtomically("text", file));
  EXPECT_TRUE(platform::createDirectoryAtPath(folder));
  EXPECT_TRUE(platform::writeStringToFileAtomically("text \xc3\xa4", file));
  EXPECT_FALSE(platform::writeStringToFileAtomically("not UTF-8: \xff", file));
  EXPECT_EQ(platform::stringWithContentsOfFile(file), "text \xc3\xa4");
  bool isDirectory = true;
  EXPECT_TRUE(platform::fileExistsAtPath(file, isDirectory));
  EXPECT_FALSE(isDirectory);
  EXPECT_TRUE(platform::copyItemAtPath(file, file + "2"));
  EXPECT_FALSE(platform::moveItemAtPath(file, file + "2"));
  EXPECT_TRUE(platform::moveItemAtPath(file, file + "3"));
  EXPECT_FALSE(platform::fileExistsAtPath(file));
  const auto one = platform::NSData::dataWithContentsOfFile(file + "2");
  const auto other = platform::NSData::dataWithContentsOfFile(file + "3");
  ASSERT_TRUE(one && other);
  EXPECT_EQ(one->length(), 7U);
  // Both are mapped, so that large files take no memory.
  EXPECT_EQ(GSDebugAllocationCount(NSClassFromString(@"NSDataMappedFile")), 2);
  EXPECT_TRUE(one->isEqualToData(*other));
  EXPECT_TRUE(platform::removeItemAtPath(folder));
  EXPECT_FALSE(platform::removeItemAtPath(folder));
  EXPECT_EQ(platform::NSData::dataWithContentsOfFile(file), nullptr);
}

TEST(Files, RefuseEmptyPathsAndPathsWithNul) {
  const std::string sound = "/var/mobile/sound";
  ASSERT_TRUE(platform::writeStringToFileAtomically("text", sound));
  for (const std::string& path : {std::string(), sound + std::string("\0/x", 3)}) {
    EXPECT_FALSE(platform::fileExistsAtPath(path));
    EXPECT_FALSE(platform::removeItemAtPath(path));
    EXPECT_FALSE(platform::createDirectoryAtPath(path));
    EXPECT_FALSE(platform::moveItemAtPath(path, sound));
    EXPECT_FALSE(platform::moveItemAtPath(sound, path));
    EXPECT_FALSE(platform::copyItemAtPath(path, sound));
    EXPECT_FALSE(platform::writeStringToFileAtomically("other", path));
    EXPECT_EQ(platform::stringWithContentsOfFile(path), std::nullopt);
    EXPECT_EQ(platform::NSData::dataWithContentsOfFile(path), nullptr);
    EXPECT_EQ(platform::arrayWithContentsOfFile(path), std::nullopt);
  }
  EXPECT_EQ(platform::stringWithContentsOfFile(sound), "text");
}

TEST(Files, ParseNamesAndNumbersAsThePlatformDoes) {
  EXPECT_EQ(platform::lastPathComponent("/a/b.gif/"), "b.gif");
  EXPECT_EQ(platform::stringByDeletingPathExtension("/a/b.gif"), "/a/b");
  EXPECT_TRUE(platform::boolValue("TRUE"));
  EXPECT_FALSE(platform::boolValue("FALSE"));
  EXPECT_EQ(platform::intValue(" 12x"), 12);
  EXPECT_EQ(platform::doubleValue("0.25s"), 0.25);
  EXPECT_EQ(platform::decimalText(0.1), "0.100000");
  // Invalid UTF-8 must not end the process.
  EXPECT_EQ(platform::intValue("\xff\xfe"), 0);
}

TEST(Files, KeepOtherKeysWhenOneSettingChanges) {
  [[NSDictionary dictionaryWithObjectsAndKeys:[NSNumber numberWithInt:7], @"NUMBER",
                                              [NSArray arrayWithObject:@"x"], @"LIST", @"0.5",
                                              @"SHARED_GIF_SPEED", nil]
      writeToFile:[NSString stringWithUTF8String:settings]
       atomically:YES];
  EXPECT_EQ(lumora::getSharedGIFSpeed(), 0.5F);
  lumora::setPreferencesObjectKey("2", "SHARED_GIF_SPEED");
  EXPECT_EQ(lumora::getSharedGIFSpeed(), 2);
  NSDictionary* stored =
      [NSDictionary dictionaryWithContentsOfFile:[NSString stringWithUTF8String:settings]];
  EXPECT_EQ([[stored objectForKey:@"NUMBER"] intValue], 7);
  EXPECT_EQ([[stored objectForKey:@"LIST"] count], 1U);
}

TEST(Files, GiveDefaultsForDamagedSettingsUntilRewritten) {
  for (const char* damage : {"", "<plist", "<plist><array/></plist>", "\x01\x02"}) {
    platform::writeStringToFileAtomically(damage, settings);
    EXPECT_TRUE(lumora::getEnabled());
    EXPECT_EQ(lumora::getModeIndex(), 1);
  }
  lumora::setPreferencesObjectKey("0", "MODE_INDEX");
  EXPECT_EQ(lumora::getModeIndex(), 0);
}

TEST(Files, PreserveListsOfStrings) {
  const std::string path = "/var/mobile/list.plist";
  EXPECT_EQ(platform::arrayWithContentsOfFile(path), std::nullopt);
  const std::vector<std::string> list = {"0.100000", "", "a & b"};
  EXPECT_TRUE(platform::writeArrayToFile(list, path));
  EXPECT_EQ(platform::arrayWithContentsOfFile(path), list);
}

}  // namespace
