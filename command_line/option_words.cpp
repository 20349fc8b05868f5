#include "command_line/option_words.h"

#include <algorithm>
#include <cctype>
#include <sstream>

#include "command_line/one_of.h"

namespace command_line {
namespace {

std::vector<std::string> splitAt(char separator, const std::string& text) {
  std::vector<std::string> parts;
  std::istringstream stream(text);
  for (std::string part; std::getline(stream, part, separator);) parts.push_back(part);
  return parts;
}

Options optionsThat(const CLI::App& command, bool arePositional) {
  return command.get_options([arePositional](const CLI::Option* option) {
    return option->get_positional() == arePositional;
  });
}

// Names of values that are not words to type.
bool isPlaceholder(const std::string& word) {
  return word == "SECONDS" || word == "COLOR" || word == "FILE";
}

// A value's name can contain its choices; an argument is named differently.
bool areChoicesKnown(const CLI::Option& option, const std::vector<std::string>& choices) {
  const std::string& text = option.get_description();
  return std::ranges::all_of(choices, [&option, &text](const std::string& choice) {
    return text.find(choice) != text.npos || valueName(option).find(choice) != text.npos;
  });
}

}  // namespace

Options argumentsOf(const CLI::App& command) {
  return optionsThat(command, true);
}

Options optionsOf(const CLI::App& command) {
  Options options = optionsThat(command, false);
  const auto help = std::find_if(options.begin(), options.end(), [](const CLI::Option* option) {
    return option->get_name() == "--help";
  });
  if (help != options.end()) std::rotate(help, help + 1, options.end());
  return options;
}

std::string longName(const CLI::Option& option) {
  return "--" + option.get_lnames().front();
}

std::string valueName(const CLI::Option& option) {
  // Checks add to the name of the type.
  const std::string type = option.get_type_name();
  return option.get_positional() ? option.get_name() : type.substr(0, type.find(':'));
}

// The name of the type is "on|off".
std::vector<std::string> choicesOf(const CLI::Option& option) {
  auto choices = splitAt('|', option.get_type_name());
  if (choices.size() < 2) return {};
  std::erase_if(choices, isPlaceholder);
  return choices;
}

bool isRequired(const CLI::Option& argument) {
  return argument.get_required() || !argument.get_option_text().empty();
}

bool takesValue(const CLI::Option& option) {
  return option.get_expected_min() > 0;
}

std::string descriptionOf(const CLI::Option& option) {
  const auto choices = choicesOf(option);
  const std::string usual = option.get_default_str();
  std::vector<std::string> notes;
  if (!areChoicesKnown(option, choices)) notes.push_back(joined(choices, ", "));
  if (!usual.empty()) notes.push_back("default: " + usual);
  const std::string note = joined(notes, "; ");
  return option.get_description() + (note.empty() ? "" : " (" + note + ")");
}

std::string synopsisOf(const CLI::App& command) {
  std::string synopsis = command.get_name();
  for (const CLI::Option* argument : argumentsOf(command)) {
    const std::string name = argument->get_name();
    synopsis += isRequired(*argument) ? " " + name : " [" + name + "]";
  }
  return synopsis;
}

std::string sentence(std::string text) {
  if (!text.empty()) text.front() = static_cast<char>(std::toupper(text.front()));
  return text + ".";
}

}  // namespace command_line
