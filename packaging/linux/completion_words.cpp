#include "packaging/linux/completion_words.h"

#include <string_view>

#include "command_line/option_words.h"

namespace completions {
namespace {

// Returns a command that prints the words of this kind, or "". It contains no colon, which zsh
// would take for a separator.
std::string commandFor(std::string_view kind) {
  if (kind == "KEY") return "lumora settings 2>/dev/null | cut -d ' ' -f 1";
  if (kind == "COMMAND") return "lumora help | sed -n 's/^  \\([a-z][a-z]*\\)  .*/\\1/p'";
  if (kind == "OUTPUT") {
    return "lumora outputs --json 2>/dev/null | sed -n 's/.*\"name\". \"\\(.*\\)\".*/\\1/p'";
  }
  return "";
}

bool namesFile(const std::string& value) {
  return value == "GIF" || value == "SCRIPT" || value.find("FILE") != value.npos;
}

void add(Offer& offer, const Offer& other) {
  offer.words.insert(offer.words.end(), other.words.begin(), other.words.end());
  if (offer.command.empty()) offer.command = other.command;
  offer.hasFiles = offer.hasFiles || other.hasFiles;
  offer.hasFolders = offer.hasFolders || other.hasFolders;
}

}  // namespace

bool Offer::isEmpty() const {
  return words.empty() && command.empty() && !hasFiles && !hasFolders;
}

Offer offerFor(const CLI::Option& option) {
  const std::string value = command_line::valueName(option);
  return {command_line::choicesOf(option), commandFor(value), namesFile(value), value == "DIR"};
}

std::vector<Offer> offersByPlace(const CLI::App& command) {
  const auto arguments = command_line::argumentsOf(command);
  std::vector<Offer> offers;
  for (std::size_t place = 0; place < arguments.size(); ++place) {
    offers.push_back(offerFor(*arguments[place]));
    const bool hasNext = place + 1 < arguments.size();
    if (hasNext && !command_line::isRequired(*arguments[place])) {
      add(offers.back(), offerFor(*arguments[place + 1]));
    }
  }
  return offers;
}

}  // namespace completions
