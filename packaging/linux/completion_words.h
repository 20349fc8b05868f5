// What the shells offer for an argument or an option's value.
#pragma once

#include <string>
#include <vector>

#include <CLI/CLI.hpp>

namespace completions {

struct Offer {
  std::vector<std::string> words;
  // A shell command that prints further words, or "".
  std::string command;
  bool hasFiles = false;
  bool hasFolders = false;

  bool isEmpty() const;
};

Offer offerFor(const CLI::Option& option);

// Returns what each argument of the command offers. If one may be left out, its place offers the
// next one's words, too.
std::vector<Offer> offersByPlace(const CLI::App& command);

}  // namespace completions
