// Options and arguments that accept some words only.
#pragma once

#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include <CLI/CLI.hpp>

namespace command_line {

// Returns the words with the separator between them.
inline std::string joined(const std::vector<std::string>& words, const std::string& separator) {
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "" : separator) + word;
  return text;
}

// Replaces the text by the word that it is in any case. Returns "", or what is wrong if it is none
// of them.
inline std::string takeWord(const std::vector<std::string>& words, std::string& text) {
  const auto word = std::ranges::find(words, CLI::detail::to_lower(text), CLI::detail::to_lower);
  if (word != words.end()) {
    text = *word;
    return "";
  }
  const std::vector<std::string> others(words.begin(), words.end() - 1);
  return "must be " + joined(others, ", ") + " or " + words.back() + ", not " + text;
}

// Makes an option accept these words, in any case, and other names for some of them. It gets the
// word as it is given here. Returns the option.
inline CLI::Option* acceptOneOf(CLI::Option* option, std::vector<std::string> words,
                                std::map<std::string, std::string> otherNames = {}) {
  const std::string type = joined(words, "|");
  auto take = [words = std::move(words), otherNames = std::move(otherNames)](std::string& text) {
    const auto other = otherNames.find(CLI::detail::to_lower(text));
    if (other != otherNames.end()) text = other->second;
    return takeWord(words, text);
  };
  // A check could not change the text.
  return option->transform(CLI::Validator(std::move(take), ""))->type_name(type);
}

}  // namespace command_line
