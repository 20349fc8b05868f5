// Writes what is made from the table of commands to standard output: describe_commands
// man|examples|bash|zsh|fish writes the commands' part of a man page, its examples, or a shell's
// completions; describe_commands host writes the man page's part on the options of springboard.

#include <cstdio>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "command_line/command_groups.h"
#include "command_line/option_words.h"
#include "host/options/host_options.h"
#include "packaging/linux/completions.h"
#include "tool/command_line.h"
#include "tool/program.h"

namespace {

using command_line::argumentsOf;
using command_line::descriptionOf;
using command_line::longName;
using command_line::optionsOf;
using command_line::takesValue;
using command_line::valueName;

std::string roff(const std::string& text) {
  std::string result;
  for (const char letter : text) {
    if (letter == '-' || letter == '\\') result += '\\';
    // Else they would become curly quotes.
    if (letter == '\'' || letter == '`') {
      result += letter == '`' ? "\\(ga" : "\\(aq";
      continue;
    }
    result += letter;
    if (letter == '\\') result += 'e';
  }
  return result;
}

void describeOption(const CLI::Option& option) {
  std::string name;
  if (!option.get_positional()) name = "\\fB" + roff(longName(option)) + "\\fR";
  if (takesValue(option)) {
    name += (name.empty() ? "\\fI" : " \\fI") + roff(valueName(option)) + "\\fR";
  }
  std::printf(".TP\n%s\n%s\n", name.c_str(), roff(descriptionOf(option)).c_str());
}

void describeOptions(const CLI::App& app) {
  for (const CLI::Option* argument : argumentsOf(app)) describeOption(*argument);
  for (const CLI::Option* option : optionsOf(app)) {
    if (option->get_name() != "--help") describeOption(*option);
  }
}

void describeExamples(const std::vector<std::string>& examples) {
  if (examples.empty()) return;
  std::printf(".PP\n.RS\n.nf\n");
  for (const std::string& example : examples) std::printf("%s\n", roff(example).c_str());
  std::printf(".fi\n.RE\n");
}

void describeCommands(const CLI::App& lumora) {
  for (const command_line::CommandGroup& group :
       command_line::groupsOf(lumora, tool::theProgram().groups)) {
    for (const CLI::App* command : group.commands) {
      std::printf(".SS %s\n%s\n", roff(command_line::synopsisOf(*command)).c_str(),
                  roff(command_line::sentence(command->get_description())).c_str());
      describeOptions(*command);
      describeExamples(tool::theProgram().examplesOf(command->get_name()));
    }
  }
}

void writeExamples(const CLI::App& /*lumora*/) {
  describeExamples(tool::theProgram().examplesOf(""));
}

}  // namespace

int main(int argc, char** argv) try {
  const std::string kind = argc == 2 ? argv[1] : "";
  if (kind == "host") {
    CLI::App springboard;
    host::HostOptions options;
    host::addHostOptions(springboard, options);
    describeOptions(springboard);
    return 0;
  }
  void (*write)(const CLI::App&) = kind == "man"        ? describeCommands
                                   : kind == "examples" ? writeExamples
                                   : kind == "bash"     ? completions::writeBash
                                   : kind == "zsh"      ? completions::writeZsh
                                   : kind == "fish"     ? completions::writeFish
                                                        : nullptr;
  if (write == nullptr) {
    std::fprintf(stderr, "usage: describe_commands man|examples|bash|zsh|fish|host\n");
    return 2;
  }
  tool::withCommands(write);
  return 0;
} catch (const std::exception& error) {
  std::fprintf(stderr, "describe_commands: %s\n", error.what());
  return 1;
}
