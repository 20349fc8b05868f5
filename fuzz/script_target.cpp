// Fuzzes the scripts of `lumora play`: parses every line as a command or compares it with a status.
// Performs no command.

#include <sstream>

#include "fuzz/device.h"
#include "tool/command_line.h"
#include "tool/commands/expectation.h"
#include "tool/commands/script_line.h"
#include "tool/commands/status_command.h"
#include "tool/support/failure.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::clearDevice();
  std::istringstream lines(std::string(data, data + size));
  for (std::string line; std::getline(lines, line);) {
    try {
      const auto words = tool::wordsOfLine(line);
      if (words.empty()) continue;
      if (words.front() == "expect") {
        tool::expect(tool::currentStatus(nullptr), words);
      } else {
        tool::parseLine(words);
      }
    } catch (const tool::Failure&) {
      // A wrong line is a normal result.
    }
  }
  return 0;
}
