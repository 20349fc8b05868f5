#include "command_line/help_text.h"

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "command_line/command_groups.h"
#include "command_line/option_words.h"
#include "command_line/program.h"

namespace command_line {
namespace {

constexpr std::size_t lineWidth = 80;
constexpr std::size_t indent = 2;

struct Row {
  std::string name;
  std::string text;
};

// Returns the words in lines that fit behind a column of names.
std::string wrapped(const std::string& text, std::size_t column) {
  std::istringstream words(text);
  std::string result;
  std::size_t at = column;
  for (std::string word; words >> word; at += word.size()) {
    if (at > column && at + 1 + word.size() > lineWidth) {
      result += "\n" + std::string(column, ' ');
      at = column;
    } else if (at > column) {
      result += ' ';
      ++at;
    }
    result += word;
  }
  return result;
}

// Returns the column of the texts: behind the longest name, except for very long ones.
std::size_t columnFor(const std::vector<Row>& rows) {
  constexpr std::size_t maxName = 24;
  std::size_t longest = 0;
  for (const Row& row : rows) {
    if (row.name.size() <= maxName) longest = std::max(longest, row.name.size());
  }
  return indent + longest + indent;
}

std::string section(const std::string& title, const std::vector<Row>& rows, std::size_t column) {
  if (rows.empty()) return "";
  std::string text = "\n" + title + ":\n";
  for (const Row& row : rows) {
    std::string line = std::string(indent, ' ') + row.name;
    const bool isLong = line.size() + indent > column;
    line += isLong ? "\n" + std::string(column, ' ') : std::string(column - line.size(), ' ');
    text += line + wrapped(row.text, column) + "\n";
  }
  return text;
}

std::string synopsisOfOption(const CLI::Option& option) {
  std::string synopsis = longName(option);
  if (!option.get_snames().empty()) synopsis.insert(0, "-" + option.get_snames().front() + ", ");
  return takesValue(option) ? synopsis + " " + valueName(option) : synopsis;
}

std::string usage(const CLI::App& command, const std::string& program) {
  if (command.get_parent() == nullptr) return "Usage: " + program + " COMMAND [ARGUMENT ...]\n";
  const std::string synopsis = synopsisOf(command);
  const std::string rest = synopsis.substr(command.get_name().size());
  return "Usage: " + program + " [OPTION ...]" + rest + "\n";
}

std::string listOfCommands(const CLI::App& app, const Program& program) {
  std::string text;
  for (const CommandGroup& group : groupsOf(app, program.groups)) {
    std::vector<Row> rows;
    for (const CLI::App* command : group.commands) {
      rows.push_back({command->get_name(), command->get_description()});
    }
    constexpr std::size_t column = 14;
    text += section(group.name, rows, column);
  }
  return text;
}

std::string listOfArguments(const CLI::App& command) {
  std::vector<Row> rows;
  for (const CLI::Option* argument : argumentsOf(command)) {
    rows.push_back({argument->get_name(), descriptionOf(*argument)});
  }
  return section("Arguments", rows, columnFor(rows));
}

std::string listOfOptions(const CLI::App& command) {
  std::string text;
  for (const std::string& group : command.get_groups()) {
    std::vector<Row> rows;
    for (const CLI::Option* option : optionsOf(command)) {
      if (option->get_group() != group) continue;
      rows.push_back({synopsisOfOption(*option), descriptionOf(*option)});
    }
    text += section(group, rows, columnFor(rows));
  }
  return text;
}

std::string listOfExamples(const std::vector<std::string>& examples) {
  if (examples.empty()) return "";
  std::string text = examples.size() == 1 ? "\nExample:\n" : "\nExamples:\n";
  for (const std::string& example : examples) text += std::string(indent, ' ') + example + "\n";
  return text;
}

std::string makeHelp(const CLI::App& command, const Program& program) {
  const bool isWhole = command.get_parent() == nullptr;
  const std::string description = command.get_description();
  const std::string help =
      (isWhole ? description : sentence(description)) + "\n\n" + usage(command, program.name);
  if (isWhole) {
    return help + listOfCommands(command, program) + listOfArguments(command) +
           listOfOptions(command) + (program.more.empty() ? "" : "\n" + program.more + "\n");
  }
  return help + listOfArguments(command) + listOfOptions(command) +
         listOfExamples(program.examplesOf(command.get_name()));
}

}  // namespace

std::shared_ptr<CLI::FormatterBase> helpFormatter(const Program& program) {
  return std::make_shared<CLI::FormatterLambda>(
      [&program](const CLI::App* command, const std::string&, CLI::AppFormatMode) {
        return makeHelp(*command, program);
      });
}

}  // namespace command_line
