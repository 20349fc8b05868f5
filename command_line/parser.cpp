#include "command_line/parser.h"

#include <algorithm>
#include <cstdio>
#include <numeric>
#include <sstream>
#include <utility>

#include "command_line/failure.h"
#include "command_line/help_text.h"
#include "command_line/option_words.h"

namespace command_line {
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
std::string suggestion(const CLI::App& app, const std::string& word) {
  // A third of the letters may differ.
  std::size_t best = word.size() / 3 + 1;
  std::string name;
  for (const CLI::App* command : app.get_subcommands({})) {
    const std::size_t found = distance(word, command->get_name());
    if (found >= best) continue;
    best = found;
    name = command->get_name();
  }
  return name.empty() ? "" : "; did you mean '" + name + "'?";
}

std::string noSuchCommand(const CLI::App& app, const std::string& word) {
  return "there is no command '" + word + "'" + suggestion(app, word);
}

// Returns the help of a command; "" is all of them.
std::string helpOn(const CLI::App& app, const std::string& name) {
  if (name.empty()) return app.get_formatter()->make_help(&app, app.get_name(), {});
  for (const CLI::App* command : app.get_subcommands({})) {
    if (command->get_name() == name) return command->help(app.get_name());
  }
  throw Failure(noSuchCommand(app, name), ExitCode::WrongUse,
                "For usage, run: " + app.get_name() + " --help\n");
}

void addHelpCommand(CLI::App& app, Context& context) {
  auto name = std::make_shared<std::string>();
  CLI::App* command = app.add_subcommand("help", "explain a command");
  command->add_option("COMMAND", *name, "command to explain");
  command->callback([&app, &context, name] {
    context.action = [text = helpOn(app, *name)] {
      std::fputs(text.c_str(), stdout);
      return 0;
    };
  });
}

// Returns the first word that is neither an option of the program with a value nor that value.
std::string firstWord(const CLI::App& app, const std::vector<std::string>& words) {
  for (std::size_t at = 0; at < words.size(); ++at) {
    const CLI::Option* option = app.get_option_no_throw(words[at]);
    const bool takesNext = option != nullptr && takesValue(*option);
    const bool hasValue = words[at].starts_with("--") && words[at].find('=') != std::string::npos;
    if (takesNext) ++at;
    if (!takesNext && !hasValue) return words[at];
  }
  return "";
}

bool isCommand(const CLI::App& app, const std::string& word) {
  const auto commands = app.get_subcommands({});
  return std::any_of(commands.begin(), commands.end(),
                     [&word](const CLI::App* command) { return command->get_name() == word; });
}

// first: the first word, which may be no command although there is one among the others.
std::string problem(const CLI::App& app, const std::string& first, const CLI::ParseError& error) {
  const bool isWord = !first.empty() && !first.starts_with('-');
  if (isWord && !isCommand(app, first)) return noSuchCommand(app, first);
  const bool isEmpty = app.remaining().empty() && app.count_all() == 0;
  return app.get_subcommands().empty() && isEmpty ? "a command is required" : error.what();
}

[[noreturn]] void refuse(const CLI::App& app, const std::string& first,
                         const CLI::ParseError& error) {
  const auto commands = app.get_subcommands();
  const std::string command = commands.empty() ? "" : " " + commands.front()->get_name();
  throw Failure(problem(app, first, error), ExitCode::WrongUse,
                "For usage, run: " + app.get_name() + command + " --help\n");
}

}  // namespace

void declare(CLI::App& app, Context& context, const Program& program) {
  app.name(program.name);
  app.description(program.purpose);
  app.formatter(helpFormatter(program));
  app.set_help_flag("-h,--help", "print this help");
  app.set_version_flag("-V,--version", program.version, "print the version");
  app.fallthrough();
  app.require_subcommand(1);
  addHelpCommand(app, context);
}

std::function<int()> parse(CLI::App& app, std::shared_ptr<Context> context,
                           std::vector<std::string> words) {
  const std::string first = firstWord(app, words);
  try {
    // The parser expects the words in reverse order.
    std::reverse(words.begin(), words.end());
    app.parse(std::move(words));
    return [context = std::move(context)] { return context->action(); };
  } catch (const CLI::Success& asked) {
    std::ostringstream answer;
    const int code = app.exit(asked, answer);
    return [answer = answer.str(), code] {
      std::fputs(answer.c_str(), stdout);
      return code;
    };
  } catch (const CLI::ParseError& error) {
    refuse(app, first, error);
  }
}

}  // namespace command_line
