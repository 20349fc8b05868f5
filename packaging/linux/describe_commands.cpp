// Writes what is made from the table of commands to standard output: describe_commands
// man|examples|bash|zsh|fish writes the commands' part of a man page, its examples, or a shell's
// completions; describe_commands host writes the man page's part on the options of springboard.

#include <cctype>
#include <cstdio>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "host/options/host_options.h"
#include "tool/command_groups.h"
#include "tool/command_line.h"
#include "tool/examples.h"
#include "tool/option_words.h"

namespace {

using tool::argumentsOf;
using tool::choicesOf;
using tool::descriptionOf;
using tool::longName;
using tool::optionsOf;
using tool::takesValue;
using tool::valueName;

bool takesFile(const CLI::Option& option) {
  const std::string name = valueName(option);
  return name == "GIF" || name == "SCRIPT" || name == "FILE.png" || name == "DIR";
}

// ---- man page

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
  for (const tool::CommandGroup& group : tool::groupsOf(lumora)) {
    for (const CLI::App* command : group.commands) {
      std::printf(".SS %s\n%s\n", roff(tool::synopsisOf(*command)).c_str(),
                  roff(tool::sentence(command->get_description())).c_str());
      describeOptions(*command);
      describeExamples(tool::examplesOf(command->get_name()));
    }
  }
}

void writeExamples(const CLI::App& /*lumora*/) {
  describeExamples(tool::examplesOf(""));
}

// ---- completions

std::string joined(const std::vector<std::string>& words) {
  return CLI::detail::join(words, " ");
}

std::vector<std::string> longNames(const CLI::App& app) {
  std::vector<std::string> names;
  for (const CLI::Option* option : optionsOf(app)) names.push_back(longName(*option));
  return names;
}

std::vector<std::string> commandNames(const CLI::App& lumora) {
  std::vector<std::string> names;
  for (const CLI::App* command : lumora.get_subcommands({})) names.push_back(command->get_name());
  return names;
}

// Every option that takes a value, as a pattern.
std::string patternOfValueOptions(const CLI::App& lumora) {
  std::set<std::string> names;
  auto collect = [&names](const CLI::App& app) {
    for (const CLI::Option* option : optionsOf(app)) {
      if (takesValue(*option)) names.insert(longName(*option));
    }
  };
  collect(lumora);
  for (const CLI::App* command : lumora.get_subcommands({})) collect(*command);
  return CLI::detail::join(names, "|");
}

void writeBash(const CLI::App& lumora) {
  std::printf(
      "# Completions of lumora for bash.\n"
      "_lumora() {\n"
      "  local word=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}\n"
      "  local command= place=-1 at\n"
      "  for ((at = 1; at < COMP_CWORD; at++)); do\n"
      "    case ${COMP_WORDS[at]} in\n"
      "      %s) ((at++)) ;;\n"
      "      -*) ;;\n"
      "      *)\n"
      "        [ -z \"$command\" ] && command=${COMP_WORDS[at]}\n"
      "        ((place++))\n"
      "        ;;\n"
      "    esac\n"
      "  done\n"
      "  local words= files=\n"
      "  case $previous in\n"
      "    --root) files=1 ;;\n"
      "    *)\n"
      "      case $command:$place in\n"
      "        :*) words='%s %s' ;;\n",
      patternOfValueOptions(lumora).c_str(), joined(commandNames(lumora)).c_str(),
      joined(longNames(lumora)).c_str());
  for (const CLI::App* command : lumora.get_subcommands({})) {
    int place = 0;
    for (const CLI::Option* option : argumentsOf(*command)) {
      const std::string which = command->get_name() + ":" + std::to_string(place++);
      const auto choices = choicesOf(*option);
      if (!choices.empty()) {
        std::printf("        %s) words='%s' ;;\n", which.c_str(), joined(choices).c_str());
      } else if (takesFile(*option)) {
        std::printf("        %s) files=1 ;;\n", which.c_str());
      }
    }
  }
  std::printf("      esac\n      ;;\n  esac\n  case $command:$previous in\n");
  for (const CLI::App* command : lumora.get_subcommands({})) {
    for (const CLI::Option* option : optionsOf(*command)) {
      if (!takesValue(*option)) continue;
      std::printf("    %s:%s) words='%s' files=%s ;;\n", command->get_name().c_str(),
                  longName(*option).c_str(), joined(choicesOf(*option)).c_str(),
                  takesFile(*option) ? "1" : "");
    }
  }
  std::printf("  esac\n  if [[ $word = -* ]]; then\n    case $command in\n");
  for (const CLI::App* command : lumora.get_subcommands({})) {
    std::printf("      %s) words='%s' ;;\n", command->get_name().c_str(),
                joined(longNames(*command)).c_str());
  }
  std::printf(
      "    esac\n"
      "  fi\n"
      "  COMPREPLY=($(compgen -W \"$words\" -- \"$word\"))\n"
      "  if [ -n \"$files\" ]; then\n"
      "    mapfile -t -O ${#COMPREPLY[@]} COMPREPLY < <(compgen -f -- \"$word\")\n"
      "    compopt -o filenames\n"
      "  fi\n"
      "}\n"
      "complete -F _lumora lumora\n");
}

std::string quoted(std::string text) {
  for (std::size_t at = 0; (at = text.find('\'', at)) != text.npos; at += 4) {
    text.replace(at, 1, "'\\''");
  }
  return "'" + text + "'";
}

// Characters that _arguments and _describe would take for their own.
std::string zshText(const std::string& text) {
  std::string result;
  for (const char letter : text) {
    if (letter == ':' || letter == '[' || letter == ']') result += '\\';
    result += letter;
  }
  return result;
}

std::string zshAction(const CLI::Option& option) {
  const auto choices = choicesOf(option);
  if (!choices.empty()) return "(" + joined(choices) + ")";
  return takesFile(option) ? "_files" : " ";
}

void writeZsh(const CLI::App& lumora) {
  std::printf(
      "#compdef lumora\n"
      "# Completions of lumora for zsh.\n"
      "local -a commands\n"
      "commands=(\n");
  for (const CLI::App* command : lumora.get_subcommands({})) {
    const std::string entry = command->get_name() + ":" + zshText(command->get_description());
    std::printf("  %s\n", quoted(entry).c_str());
  }
  std::printf(
      ")\n"
      "local curcontext=$curcontext state line\n"
      "_arguments -C '--root[folder of the device]:folder:_files -/' '--version' '--help' \\\n"
      "  '1: :->command' '*:: :->arguments'\n"
      "case $state in\n"
      "  command) _describe command commands ;;\n"
      "  arguments)\n"
      "    case $words[1] in\n");
  for (const CLI::App* command : lumora.get_subcommands({})) {
    std::printf("      %s) _arguments", command->get_name().c_str());
    for (const CLI::Option* option : optionsOf(*command)) {
      std::string entry = longName(*option) + "[" + zshText(option->get_description()) + "]";
      if (takesValue(*option)) {
        entry += ":" + zshText(valueName(*option)) + ":" + zshAction(*option);
      }
      std::printf(" %s", quoted(entry).c_str());
    }
    for (const CLI::Option* option : argumentsOf(*command)) {
      const std::string entry = ":" + zshText(option->get_name()) + ":" + zshAction(*option);
      std::printf(" %s", quoted(entry).c_str());
    }
    std::printf(" ;;\n");
  }
  std::printf("    esac\n    ;;\nesac\n");
}

void writeFish(const CLI::App& lumora) {
  std::printf(
      "# Completions of lumora for fish.\n"
      "complete -c lumora -f\n"
      "complete -c lumora -n __fish_use_subcommand -l root -r -F -d 'folder of the device'\n");
  for (const CLI::App* command : lumora.get_subcommands({})) {
    const std::string name = command->get_name();
    const std::string condition = "-n '__fish_seen_subcommand_from " + name + "'";
    std::printf("complete -c lumora -n __fish_use_subcommand -a %s -d %s\n", name.c_str(),
                quoted(command->get_description()).c_str());
    for (const CLI::Option* option : optionsOf(*command)) {
      const auto choices = choicesOf(*option);
      std::string rest = takesValue(*option) ? " -x" : "";
      if (!choices.empty()) rest += " -a " + quoted(joined(choices));
      std::printf("complete -c lumora %s -l %s%s -d %s\n", condition.c_str(),
                  option->get_lnames().front().c_str(), rest.c_str(),
                  quoted(option->get_description()).c_str());
    }
    for (const CLI::Option* option : argumentsOf(*command)) {
      const auto choices = choicesOf(*option);
      if (!choices.empty()) {
        std::printf("complete -c lumora %s -a %s\n", condition.c_str(),
                    quoted(joined(choices)).c_str());
      } else if (takesFile(*option)) {
        std::printf("complete -c lumora %s -F\n", condition.c_str());
      }
    }
  }
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
                                   : kind == "bash"     ? writeBash
                                   : kind == "zsh"      ? writeZsh
                                   : kind == "fish"     ? writeFish
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
