// Fuzzes the scripts of `lumora play`: parses every line as a command or compares it with a status.
// Performs no command.

#include <sstream>

#include "command_line/failure.h"
#include "fuzz/device.h"
#include "tool/command_line.h"
#include "tool/commands/expectation.h"
#include "tool/commands/script_line.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const nlohmann::ordered_json status = {
      {"screen", "home"}, {"size", {390, 844}}, {"locations", {{"shared", {{"speed", 1.5}}}}}};
  fuzz::clearDevice();
  std::istringstream lines(std::string(data, data + size));
  for (std::string line; std::getline(lines, line);) {
    try {
      const auto words = tool::wordsOfLine(line);
      if (words.empty()) continue;
      if (words.front() == "expect") {
        tool::problemWith(status, tool::expectationIn(words, 1));
      } else {
        tool::parseLine(words);
      }
    } catch (const command_line::Failure&) {
      // A wrong line is a normal result.
    }
  }
  return 0;
}
