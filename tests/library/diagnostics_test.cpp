#include <cmath>
#include <cstdlib>
#include <ctime>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/linux/main_loop/activity.h"
#include "platform/linux/main_loop/run_loop.h"
#include "platform/operation_queue.h"
#include "settings/device_paths.h"
#include "settings/diagnostic_log.h"
#include "tests/fixture/stage.h"
#include "threads/main_thread.h"

namespace {

using platform::NSOperationQueue;
using platform::backend::RunLoop;
using testing_stage::DeviceRoot;

// Returns true if the log consists of entries with these messages, dated within ten minutes.
bool hasEntries(std::string log, const std::vector<std::string>& messages) {
  for (const std::string& message : messages) {
    const std::string start = message + " --- Date: ";
    if (!log.starts_with(start)) return false;
    std::tm date{};
    const char* end = strptime(log.c_str() + start.size(), "%Y-%m-%d %H:%M:%S +0000", &date);
    if (end == nullptr || *end != '\n') return false;
    if (std::abs(std::difftime(timegm(&date), std::time(nullptr))) > 600) return false;
    log.erase(0, static_cast<std::size_t>(end + 1 - log.c_str()));
  }
  return log.empty();
}

TEST(Log, AppendsOneDatedEntryPerMessage) {
  const DeviceRoot root;
  setenv("TZ", "Asia/Kathmandu", 1);
  root.write(std::string(lumora::libraryDirectory) + "other", std::string("x"));
  lumora::logToFile("first");
  EXPECT_TRUE(hasEntries(root.read(lumora::logPath), {"first"})) << root.read(lumora::logPath);
  lumora::logToFile("ü\nof two lines");
  lumora::logToFile("");
  EXPECT_TRUE(hasEntries(root.read(lumora::logPath), {"first", "ü\nof two lines", ""}))
      << root.read(lumora::logPath);
}

TEST(Log, StartsOverIfTheFileIsNotUtf8) {
  const DeviceRoot root;
  lumora::logToFile("nowhere");
  EXPECT_FALSE(root.has(lumora::logPath));
  for (const char* damaged :
       {"\xFF\xFE", "caf\xE9", "cut short \xC3", "\xC0\xAF", "\xED\xA0\x80"}) {
    root.write(lumora::logPath, std::string(damaged));
    lumora::logToFile("new");
    EXPECT_TRUE(hasEntries(root.read(lumora::logPath), {"new"})) << root.read(lumora::logPath);
  }
}

TEST(Log, KeepsAFileThatIsTooLargeToRead) {
  const DeviceRoot root;
  root.write(lumora::logPath, std::string("first"));
  constexpr std::uintmax_t size = (std::uintmax_t{1} << 28) + 1;
  std::filesystem::resize_file(root(lumora::logPath), size);
  lumora::logToFile("last");
  EXPECT_EQ(std::filesystem::file_size(root(lumora::logPath)), size);
}

TEST(MainThread, IsDetectedOnlyInMainQueueBlocks) {
  EXPECT_FALSE(lumora::isMainThread());
  bool onMain = false;
  bool onOther = true;
  NSOperationQueue::mainQueue().addOperationWithBlock([&] { onMain = lumora::isMainThread(); });
  NSOperationQueue serial;
  serial.setMaxConcurrentOperationCount(1);
  serial.addOperationWithBlock([&] { onOther = lumora::isMainThread(); });
  while (platform::backend::pendingBackgroundOperations() > 0) RunLoop::main().turn({});
  RunLoop::main().runMainQueue();
  EXPECT_TRUE(onMain);
  EXPECT_FALSE(onOther);
  EXPECT_FALSE(lumora::isMainThread());
}

}  // namespace
