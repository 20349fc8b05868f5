#include "command_line/event_line.h"

#include <cstdio>
#include <ctime>

#include <unistd.h>

#include "command_line/terminal.h"

namespace command_line {
namespace {

using std::chrono::system_clock;

std::string withMilliseconds(const char* format, const std::tm& fields,
                             system_clock::time_point time) {
  char text[64];
  std::strftime(text, sizeof text, format, &fields);
  const auto rest = time - std::chrono::floor<std::chrono::seconds>(time);
  const auto milliseconds = std::chrono::floor<std::chrono::milliseconds>(rest).count();
  char whole[80];
  std::snprintf(whole, sizeof whole, "%s.%03d", text, static_cast<int>(milliseconds));
  return whole;
}

}  // namespace

std::string timeOfDay(system_clock::time_point time) {
  const std::time_t seconds = system_clock::to_time_t(time);
  std::tm local{};
  localtime_r(&seconds, &local);
  return withMilliseconds("%H:%M:%S", local, time);
}

std::string timestamp(system_clock::time_point time) {
  const std::time_t seconds = system_clock::to_time_t(time);
  std::tm universal{};
  gmtime_r(&seconds, &universal);
  return withMilliseconds("%Y-%m-%dT%H:%M:%S", universal, time) + "Z";
}

void printEvent(system_clock::time_point time, const std::string& text) {
  std::printf("%s %s\n", timeOfDay(time).c_str(), printable(text, STDOUT_FILENO).c_str());
  std::fflush(stdout);
}

}  // namespace command_line
