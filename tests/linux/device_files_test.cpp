#include <gtest/gtest.h>
#include <sys/stat.h>

#include "platform/file_manager.h"
#include "platform/linux/files/file_contents.h"
#include "tests/fixture/stage.h"

namespace {

namespace fs = std::filesystem;
using namespace platform;
using namespace platform::backend;
using testing_stage::DeviceRoot;

Bytes bytes(const std::string& text) {
  return Bytes(text.begin(), text.end());
}

TEST(DevicePaths, SplitAsOnThePlatform) {
  EXPECT_EQ(lastPathComponent("/a/b.gif"), "b.gif");
  EXPECT_EQ(lastPathComponent("/a/b/"), "b");
  EXPECT_EQ(lastPathComponent("b"), "b");
  EXPECT_EQ(lastPathComponent("/"), "/");
  EXPECT_EQ(lastPathComponent(""), "");
  EXPECT_EQ(stringByDeletingPathExtension("/a/b.gif"), "/a/b");
  EXPECT_EQ(stringByDeletingPathExtension("/a.d/b"), "/a.d/b");
  EXPECT_EQ(stringByDeletingPathExtension("/a/.hidden"), "/a/.hidden");
  EXPECT_EQ(stringByDeletingPathExtension("/a/b.tar.gz"), "/a/b.tar");
  EXPECT_EQ(stringByDeletingPathExtension(""), "");
}

TEST(DeviceFiles, AreNeverOverwrittenByMovesAndRemovedRecursively) {
  const DeviceRoot root;
  root.write("/a/one", std::string("1"));
  root.write("/a/b/c/two", std::string("2"));
  root.write("/d/one", std::string("kept"));
  EXPECT_FALSE(moveItemAtPath("/a/one", "/d/one"));
  EXPECT_FALSE(copyItemAtPath("/a/one", "/d/one"));
  EXPECT_TRUE(moveItemAtPath("/a", "/e"));
  EXPECT_EQ(contentsOfFile("/e/b/c/two"), bytes("2"));
  EXPECT_TRUE(removeItemAtPath("/e"));
  EXPECT_FALSE(root.has("/e"));
  EXPECT_FALSE(removeItemAtPath("/e"));
  EXPECT_FALSE(removeItemAtPath(""));
  EXPECT_EQ(contentsOfFile("/d/one"), bytes("kept"));
}

TEST(DeviceFiles, StayInsideTheRoot) {
  const DeviceRoot world;
  world.write("/secret", std::string("mine"));
  const DeviceRoot root;
  root.write("/inside", std::string("in"));
  fs::create_directory_symlink(world(""), root("/link"));
  fs::create_symlink(world("/secret"), root("/file"));
  const std::string up = "/../../../../../..";
  EXPECT_EQ(contentsOfFile(up + world("/secret").string()), std::nullopt);
  EXPECT_EQ(contentsOfFile(up + "/inside"), bytes("in"));
  for (const char* path : {"/link/secret", "/file", "/link/../link/secret"}) {
    EXPECT_EQ(contentsOfFile(path), std::nullopt) << path;
    EXPECT_FALSE(fileExistsAtPath(path)) << path;
  }
  EXPECT_FALSE(copyItemAtPath("/inside", "/file"));
  EXPECT_FALSE(moveItemAtPath("/inside", "/file"));
  EXPECT_FALSE(writeToFileAtomically(bytes("x"), "/link/new"));
  EXPECT_FALSE(createDirectoryAtPath("/link/new"));
  EXPECT_FALSE(removeItemAtPath("/link/secret"));
  // The host's own directory cannot be reached either.
  root.write("/.host/lock", std::string("held"));
  EXPECT_FALSE(removeItemAtPath("/.host"));
  EXPECT_FALSE(removeItemAtPath("/a/../.host/lock"));
  EXPECT_TRUE(root.has("/.host/lock"));
  // The kernel would ignore what follows a NUL.
  root.write("/above/below/file", std::string("x"));
  for (const std::string& path : {std::string("/above/..\0/secret", 17), std::string("/above\0", 7),
                                  std::string("/.host\0/lock", 12), std::string("/..\0", 4)}) {
    EXPECT_FALSE(removeItemAtPath(path));
    EXPECT_FALSE(moveItemAtPath("/inside", path));
    EXPECT_FALSE(createDirectoryAtPath(path));
  }
  EXPECT_TRUE(root.has("/above/below/file"));
  EXPECT_TRUE(root.has("/.host/lock"));
  // A link itself may be removed or replaced; its target stays.
  EXPECT_TRUE(removeItemAtPath("/link"));
  EXPECT_TRUE(writeToFileAtomically(bytes("x"), "/file"));
  EXPECT_EQ(fs::file_size(world("/secret")), 4U);
  EXPECT_FALSE(removeItemAtPath("/"));
  EXPECT_FALSE(removeItemAtPath(up));
  root.write("/folder/inner/file", std::string("x"));
  for (const char* path :
       {"/folder/inner/..", "/folder/inner/../", "/folder/.", "/folder/inner/./"}) {
    EXPECT_FALSE(removeItemAtPath(path)) << path;
  }
  EXPECT_TRUE(root.has("/folder/inner/file"));
}

TEST(DeviceFiles, CannotBeReadIfSpecialOrTooLarge) {
  const DeviceRoot root;
  ASSERT_EQ(mkfifo(root("/pipe").c_str(), 0600), 0);
  fs::create_directory(root("/folder"));
  EXPECT_EQ(contentsOfFile("/pipe"), std::nullopt);
  EXPECT_EQ(contentsOfFile("/folder"), std::nullopt);
  // A huge sparse file is not loaded.
  root.write("/giant", std::string("x"));
  fs::resize_file(root("/giant"), std::uintmax_t{1} << 40);
  EXPECT_EQ(contentsOfFile("/giant"), std::nullopt);
}

TEST(DeviceFiles, LeaveNothingBehindAfterAFailedWrite) {
  const DeviceRoot root;
  fs::create_directories(root("/place/is taken"));
  EXPECT_FALSE(writeToFileAtomically(bytes("x"), "/place/is taken"));
  EXPECT_FALSE(writeToFileAtomically(bytes("x"), "/nowhere/file"));
  EXPECT_EQ(std::distance(fs::directory_iterator(root("/place")), {}), 1);
  EXPECT_TRUE(writeToFileAtomically({}, "/place/" + std::string(255, 'n')));
}

}  // namespace
