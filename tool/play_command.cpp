#include "tool/play_command.h"

#include <cstdio>
#include <filesystem>
#include <memory>
#include <sstream>

#include <nlohmann/json.hpp>

#include "tool/failure.h"
#include "tool/script_line.h"
#include "tool/status_command.h"
#include "tool/user_file.h"

namespace tool {
namespace {

using nlohmann::ordered_json;
using Words = std::vector<std::string>;

// What a person writes for a value: JSON, or else a text as it stands.
ordered_json valueOf(const std::string& text) {
  auto value = ordered_json::parse(text, nullptr, false);
  return value.is_discarded() ? ordered_json(text) : value;
}

// Speed, opacity and blur are numbers of single precision.
bool isSame(const ordered_json& found, const ordered_json& expected) {
  if (!found.is_number() || !expected.is_number()) return found == expected;
  return found.get<float>() == expected.get<float>();
}

// The value at a path such as locations.shared.playing.
ordered_json valueAt(const ordered_json& status, const std::string& path) {
  ordered_json::json_pointer pointer;
  std::istringstream names(path);
  for (std::string name; std::getline(names, name, '.');) pointer /= name;
  if (!status.contains(pointer)) throw Failure("the status has nothing of this name");
  return status.at(pointer);
}

void expect(const DeviceFolder& device, const Words& words) {
  constexpr std::size_t fewestWords = 3;
  if (words.size() < fewestWords) throw Failure("expect takes a path and a value");
  std::string expected = words[2];
  for (std::size_t at = fewestWords; at < words.size(); ++at) expected += " " + words[at];
  const ordered_json found = valueAt(currentStatus(HostConnection::find(device).get()), words[1]);
  if (!isSame(found, valueOf(expected))) throw Failure("found " + found.dump());
}

void performWords(const Context& context, const DeviceFolder& device, Words words) {
  if (words.front() == "expect") return expect(device, words);
  if (words.front() == "play") throw Failure("a script cannot play another");
  words.insert(words.begin(), {"--root", device.path()});
  const int code = context.performLine(words);
  if (code != 0) throw Failure("exit code " + std::to_string(code));
}

void play(const Context& context, const std::string& script) {
  const std::string text = readUserText(script);
  const DeviceFolder device = context.device();
  HostConnection::require(device);
  // Files that a script names lie beside it.
  const auto folder = std::filesystem::absolute(script).parent_path();
  std::filesystem::current_path(folder);
  std::istringstream lines(text);
  int number = 0;
  for (std::string line; std::getline(lines, line);) {
    ++number;
    try {
      const Words words = wordsOfLine(line);
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
  auto* command =
      addCommand(lumora, context, "play",
                 "run a script: a command a line, and lines `expect PATH VALUE` on the status",
                 [&context, script] { play(context, *script); });
  command->add_option("SCRIPT", *script)->required();
}

}  // namespace tool
