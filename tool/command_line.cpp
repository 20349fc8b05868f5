#include "tool/command_line.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <numeric>
#include <sstream>
#include <utility>

#include <CLI/CLI.hpp>

#include "tool/commands/autostart_command.h"
#include "tool/commands/backdrop_command.h"
#include "tool/commands/blur_command.h"
#include "tool/commands/command.h"
#include "tool/commands/desktop_commands.h"
#include "tool/commands/forget_command.h"
#include "tool/commands/frames_command.h"
#include "tool/commands/host_commands.h"
#include "tool/commands/live_settings_commands.h"
#include "tool/commands/notification_commands.h"
#include "tool/commands/play_command.h"
#include "tool/commands/record_command.h"
#include "tool/commands/remove_command.h"
#include "tool/commands/run_command.h"
#include "tool/commands/screen_commands.h"
#include "tool/commands/set_command.h"
#include "tool/commands/settings_commands.h"
#include "tool/commands/status_command.h"
#include "tool/commands/trace_command.h"
#include "tool/commands/views_command.h"
#include "tool/help_text.h"
#include "tool/support/failure.h"

namespace tool {
namespace {

// Returns the Levenshtein distance: how many letters to add, remove or replace.
std::size_t distance(const std::string& one, const std::string& other) {
  std::vector<std::size_t> row(other.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t at = 0; at < one.size(); ++at) {
    std::size_t diagonal = std::exchange(row[0], at + 1);
    for (std::size_t column = 0; column < other.size(); ++column) {
      const std::size_t replaced = diagonal + (one[at] == other[column] ? 0 : 1);
      diagonal = row[column + 1];
      row[column + 1] = std::min({replaced, diagonal + 1, row[column] + 1});
    }
  }
  return row.back();
}

// Returns "; did you mean 'NAME'?" if a command has a similar name, else "".
std::string suggestion(const CLI::App& lumora, const std::string& word) {
  // A third of the letters may differ.
  std::size_t best = word.size() / 3 + 1;
  std::string name;
  for (const CLI::App* command : lumora.get_subcommands({})) {
    const std::size_t found = distance(word, command->get_name());
    if (found >= best) continue;
    best = found;
    name = command->get_name();
  }
  return name.empty() ? "" : "; did you mean '" + name + "'?";
}

std::string noSuchCommand(const CLI::App& lumora, const std::string& word) {
  return "there is no command '" + word + "'" + suggestion(lumora, word);
}

// Returns the help of a command; "" is all of them.
std::string helpOn(const CLI::App& lumora, const std::string& name) {
  if (name.empty()) return lumora.get_formatter()->make_help(&lumora, "lumora", {});
  for (const CLI::App* command : lumora.get_subcommands({})) {
    if (command->get_name() == name) return command->help("lumora");
  }
  throw Failure(noSuchCommand(lumora, name), ExitCode::WrongUse, "For usage, run: lumora --help\n");
}

void addHelpCommand(CLI::App& lumora, Context& context) {
  auto name = std::make_shared<std::string>();
  CLI::App* command = lumora.add_subcommand("help", "explain a command");
  command->add_option("COMMAND", *name, "command to explain");
  command->callback([&lumora, &context, name] {
    context.action = [text = helpOn(lumora, *name)] {
      std::fputs(text.c_str(), stdout);
      return 0;
    };
  });
}

void declareCommands(CLI::App& lumora, Context& context) {
  lumora.formatter(helpFormatter());
  lumora.set_help_flag("-h,--help", "print this help");
  lumora
      .add_option(
          "--root", context.root,
          "folder that holds everything about one home screen (default: $LUMORA_ROOT, or lumora in "
          "$XDG_DATA_HOME or ~/.local/share)")
      ->type_name("DIR");
  lumora.set_version_flag("-V,--version", "lumora " LUMORA_VERSION, "print the version");
  lumora.fallthrough();
  lumora.require_subcommand(1);
  addRunCommand(lumora, context);
  addSetCommand(lumora, context);
  addRemoveCommand(lumora, context);
  addScreenCommands(lumora, context);
  addRecordCommand(lumora, context);
  addHostCommands(lumora, context);
  addSettingsCommands(lumora, context);
  addLiveSettingsCommands(lumora, context);
  addBackdropCommand(lumora, context);
  addBlurCommand(lumora, context);
  addStatusCommand(lumora, context);
  addDesktopCommands(lumora, context);
  addAutostartCommand(lumora, context);
  addForgetCommand(lumora, context);
  addNotificationCommands(lumora, context);
  addViewsCommand(lumora, context);
  addTraceCommand(lumora, context);
  addPlayCommand(lumora, context);
  addFramesCommand(lumora, context);
  addHelpCommand(lumora, context);
}

// Returns the first word that is neither --root nor its value.
std::string firstWord(const std::vector<std::string>& words) {
  for (std::size_t at = 0; at < words.size(); at += words[at] == "--root" ? 2 : 1) {
    if (words[at] != "--root" && !words[at].starts_with("--root=")) return words[at];
  }
  return "";
}

bool isCommand(const CLI::App& lumora, const std::string& word) {
  return std::ranges::any_of(lumora.get_subcommands({}), [&word](const CLI::App* command) {
    return command->get_name() == word;
  });
}

// first: the first word, which may be no command although there is one among the others.
std::string problem(const CLI::App& lumora, const std::string& first,
                    const CLI::ParseError& error) {
  const bool isWord = !first.empty() && !first.starts_with('-');
  if (isWord && !isCommand(lumora, first)) return noSuchCommand(lumora, first);
  const bool isEmpty = lumora.remaining().empty() && lumora.count_all() == 0;
  return lumora.get_subcommands().empty() && isEmpty ? "a command is required" : error.what();
}

[[noreturn]] void refuse(const CLI::App& lumora, const std::string& first,
                         const CLI::ParseError& error) {
  const auto commands = lumora.get_subcommands();
  const std::string command = commands.empty() ? "" : " " + commands.front()->get_name();
  throw Failure(problem(lumora, first, error), ExitCode::WrongUse,
                "For usage, run: lumora" + command + " --help\n");
}

constexpr auto purpose =
    "Plays an animated GIF as the wallpaper of a desktop or of a simulated phone.";

}  // namespace

std::function<int()> parseLine(std::vector<std::string> words) {
  CLI::App lumora(purpose, "lumora");
  const auto context = std::make_shared<Context>();
  context->performLine = performLine;
  declareCommands(lumora, *context);
  const std::string first = firstWord(words);
  try {
    // The parser expects the words in reverse order.
    std::reverse(words.begin(), words.end());
    lumora.parse(std::move(words));
    return [context] { return context->action(); };
  } catch (const CLI::Success& asked) {
    std::ostringstream answer;
    const int code = lumora.exit(asked, answer);
    return [answer = answer.str(), code] {
      std::fputs(answer.c_str(), stdout);
      return code;
    };
  } catch (const CLI::ParseError& error) {
    refuse(lumora, first, error);
  }
}

int performLine(std::vector<std::string> words) {
  return parseLine(std::move(words))();
}

void withCommands(const std::function<void(const CLI::App& lumora)>& visit) {
  CLI::App lumora(purpose, "lumora");
  Context context;
  declareCommands(lumora, context);
  visit(lumora);
}

}  // namespace tool
