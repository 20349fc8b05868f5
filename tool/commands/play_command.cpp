#include "tool/commands/play_command.h"

#include <cstdio>
#include <filesystem>
#include <memory>
#include <sstream>

#include "tool/commands/expectation.h"
#include "tool/commands/script_line.h"
#include "tool/commands/status_command.h"
#include "tool/device/host_connection.h"
#include "tool/support/failure.h"
#include "tool/support/user_file.h"

namespace tool {
namespace {

void performWords(const Context& context, const DeviceFolder& device,
                  std::vector<std::string> words) {
  if (words.front() == "expect") {
    return expect(currentStatus(device, HostConnection::find(device).get()), words);
  }
  if (words.front() == "play") throw Failure("a script cannot play another");
  words.insert(words.begin(), {"--root", device.path()});
  const int code = context.performLine(words);
  if (code != 0) throw Failure("exit code " + std::to_string(code));
}

void play(const Context& context, const std::string& script) {
  const std::string text = readUserText(script);
  const DeviceFolder device = context.device();
  HostConnection::require(device);
  // Relative paths in a script start at its own folder.
  const auto folder = std::filesystem::absolute(script).parent_path();
  std::filesystem::current_path(folder);
  std::istringstream lines(text);
  int number = 0;
  for (std::string line; std::getline(lines, line);) {
    ++number;
    try {
      const std::vector<std::string> words = wordsOfLine(line);
      if (words.empty()) continue;
      std::printf("%4d  %s\n", number, line.c_str());
      std::fflush(stdout);
      performWords(context, device, words);
    } catch (const Failure& failure) {
      std::ostringstream where;
      where << script << ":" << number << ": " << line << ": " << failure.what();
      throw Failure(where.str());
    }
  }
}

}  // namespace

void addPlayCommand(CLI::App& lumora, Context& context) {
  auto script = std::make_shared<std::string>();
  auto* command = addCommand(lumora, context, "play", "run a script of commands",
                             [&context, script] { play(context, *script); });
  command
      ->add_option("SCRIPT", *script,
                   "text file with one command per line; `expect PATH VALUE` checks the status")
      ->required();
}

}  // namespace tool
