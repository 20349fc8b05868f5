#include "tool/commands/play_command.h"

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <sstream>
#include <thread>

#include "command_line/count.h"
#include "command_line/failure.h"
#include "tool/commands/expectation.h"
#include "tool/commands/script_line.h"
#include "tool/commands/script_status.h"
#include "tool/device/host_connection.h"
#include "tool/support/user_file.h"

namespace tool {

using command_line::countOf;
using command_line::Failure;

namespace {

using Words = std::vector<std::string>;

void expect(const DeviceFolder& device, const Words& words) {
  const std::string problem = problemWith(scriptStatus(device), expectationIn(words, 1));
  if (!problem.empty()) throw Failure(problem);
}

// Removes `--timeout SECONDS` from the end of the line and returns the time.
Seconds takeTimeout(Words& words) {
  constexpr long maxTimeout = 1'000'000;
  if (words.size() < 2 || words[words.size() - 2] != "--timeout") return usualTimeout;
  std::string text = words.back();
  words.resize(words.size() - 2);
  const std::string problem = numberUpTo(maxTimeout)(text);
  if (!problem.empty()) throw Failure("--timeout " + problem);
  return Seconds(std::stod(text));
}

void waitUntil(const DeviceFolder& device, Words words) {
  constexpr std::chrono::milliseconds pause{20};
  const TimeLimit limit(takeTimeout(words));
  constexpr std::size_t start = 2;
  const Expectation expectation = expectationIn(words, start);
  for (;;) {
    const std::string problem = problemWith(scriptStatus(device), expectation);
    if (problem.empty()) return;
    if (limit.isOver()) throw Failure(problem + " until the timeout");
    std::this_thread::sleep_for(pause);
  }
}

bool isWaitUntil(const Words& words) {
  return words.size() > 1 && words[0] == "wait" && words[1] == "until";
}

class Player {
 public:
  Player(const Context& context, const DeviceFolder& device) : context_(context), device_(device) {}

  // Prints the line and does what it says. Throws Failure if that cannot be done.
  void play(int number, const std::string& line) {
    const Words words = wordsOfLine(line);
    if (words.empty()) return;
    if (words.front() == "expect" || isWaitUntil(words)) {
      check(number, line, words);
    } else {
      print(number, "", line);
      perform(words);
    }
  }

  // Returns "16 expectations held".
  std::string summary() const { return countOf(held_, "expectation") + " held"; }

 private:
  static void print(int number, const char* mark, const std::string& line) {
    std::printf("%4d %-2s %s\n", number, mark, line.c_str());
    std::fflush(stdout);
  }

  void check(int number, const std::string& line, const Words& words) {
    try {
      if (isWaitUntil(words)) {
        waitUntil(device_, words);
      } else {
        expect(device_, words);
      }
    } catch (const Failure&) {
      print(number, "no", line);
      throw;
    }
    print(number, "ok", line);
    ++held_;
  }

  void perform(Words words) const {
    if (words.front() == "play") throw Failure("a script cannot play another");
    words.insert(words.begin(), {"--root", device_.path()});
    const int code = context_.performLine(words);
    if (code != 0) throw Failure("exit code " + std::to_string(code));
  }

  const Context& context_;
  const DeviceFolder& device_;
  int held_ = 0;
};

void play(const Context& context, const std::string& script) {
  const std::string text = readUserText(script);
  const DeviceFolder device = context.device();
  HostConnection::require(device);
  // Relative paths in a script start at its own folder.
  if (script != standardStream) {
    std::filesystem::current_path(std::filesystem::absolute(script).parent_path());
  }
  Player player(context, device);
  std::istringstream lines(text);
  int number = 0;
  for (std::string line; std::getline(lines, line);) {
    ++number;
    try {
      player.play(number, line);
    } catch (const Failure& failure) {
      std::printf("%s before line %d\n", player.summary().c_str(), number);
      // Before the failure, which goes to another stream.
      std::fflush(stdout);
      std::ostringstream where;
      where << script << ":" << number << ": " << line << ": " << failure.what();
      throw Failure(where.str());
    }
  }
  std::printf("%s\n", player.summary().c_str());
}

}  // namespace

void addPlayCommand(CLI::App& lumora, Context& context) {
  auto script = std::make_shared<std::string>();
  auto* command = addCommand(lumora, context, "play", "run a script of commands",
                             [&context, script] { play(context, *script); });
  command
      ->add_option("SCRIPT", *script,
                   "text file with one command per line, or - for standard input; `expect PATH "
                   "VALUE` and `wait until PATH VALUE` check the status; see lumora-play(5)")
      ->required();
}

}  // namespace tool
