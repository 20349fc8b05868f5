// Writes what is made from the table of commands: describe_commands man|bash|zsh|fish writes the
// commands' part of a man page, or a shell's completions, to standard output; describe_commands
// host writes the man page's part on the options of springboard.

#include <cctype>
#include <cstdio>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "host/options/host_options.h"
#include "tool/command_line.h"

namespace {

using Options = std::vector<const CLI::Option*>;

std::vector<std::string> splitAt(char separator, const std::string& text) {
  std::vector<std::string> parts;
  std::istringstream stream(text);
  for (std::string part; std::getline(stream, part, separator);) parts.push_back(part);
  return parts;
}

// The name of an option's value, without what its checks add to it.
std::string valueName(const CLI::Option& option) {
  const std::string type = option.get_type_name();
  return option.get_positional() ? option.get_name() : type.substr(0, type.find(':'));
}

// The words that an option accepts, from a type name such as "on|off" or "TEXT:{on,off}"; empty if
// it accepts others, too.
std::vector<std::string> choicesOf(const CLI::Option& option) {
  const std::string type = option.get_type_name();
  const auto open = type.find('{');
  if (open != type.npos) return splitAt(',', type.substr(open + 1, type.find('}') - open - 1));
  const auto choices = splitAt('|', type);
  return choices.size() < 2 ? std::vector<std::string>() : choices;
}

bool takesValue(const CLI::Option& option) {
  return option.get_expected_min() > 0;
}

bool takesFile(const CLI::Option& option) {
  const std::string name = valueName(option);
  return name == "GIF" || name == "SCRIPT" || name == "FILE.png" || name == "DIR";
}

Options optionsOf(const CLI::App& app, bool positional) {
  Options options;
  for (const CLI::Option* option : app.get_options()) {
    if (option->get_positional() == positional) options.push_back(option);
  }
  return options;
}

std::string longName(const CLI::Option& option) {
  return "--" + option.get_lnames().front();
}

// ---- man page

std::string roff(const std::string& text) {
  std::string result;
  for (const char letter : text) {
    if (letter == '-' || letter == '\\') result += '\\';
    result += letter;
    if (letter == '\\') result += 'e';
  }
  return result;
}

void describeOption(const CLI::Option& option) {
  std::string synopsis;
  if (!option.get_positional()) synopsis = "\\fB" + roff(longName(option)) + "\\fR";
  const auto choices = choicesOf(option);
  std::string value = valueName(option);
  if (!option.get_positional() && !takesValue(option)) value.clear();
  if (!value.empty()) {
    synopsis += (synopsis.empty() ? "\\fI" : " \\fI") + roff(value) + "\\fR";
  }
  std::string description = option.get_description();
  const std::string list = CLI::detail::join(choices, ", ");
  if (option.get_positional() && description.find(list) == description.npos) {
    description += (description.empty() ? "" : ": ") + list;
  }
  if (!option.get_default_str().empty()) description += " (" + option.get_default_str() + ")";
  std::printf(".TP\n%s\n%s\n", synopsis.c_str(), roff(description).c_str());
}

void describeOptions(const CLI::App& app) {
  for (const bool positional : {true, false}) {
    for (const CLI::Option* option : optionsOf(app, positional)) {
      if (option->get_name() != "--help") describeOption(*option);
    }
  }
}

std::string sentence(std::string text) {
  if (!text.empty()) text.front() = static_cast<char>(std::toupper(text.front()));
  return text + ".";
}

void describeCommands(const CLI::App& lumora) {
  for (const CLI::App* command : lumora.get_subcommands({})) {
    std::string synopsis = command->get_name();
    for (const CLI::Option* option : optionsOf(*command, true)) {
      const std::string name = option->get_name();
      synopsis += option->get_required() ? " " + name : " [" + name + "]";
    }
    std::printf(".SS %s\n%s\n", roff(synopsis).c_str(),
                roff(sentence(command->get_description())).c_str());
    describeOptions(*command);
  }
}

// ---- completions

std::string joined(const std::vector<std::string>& words) {
  return CLI::detail::join(words, " ");
}

std::vector<std::string> longNames(const CLI::App& app) {
  std::vector<std::string> names;
  for (const CLI::Option* option : optionsOf(app, false)) names.push_back(longName(*option));
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
    for (const CLI::Option* option : optionsOf(app, false)) {
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
    for (const CLI::Option* option : optionsOf(*command, true)) {
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
    for (const CLI::Option* option : optionsOf(*command, false)) {
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
    for (const CLI::Option* option : optionsOf(*command, false)) {
      std::string entry = longName(*option) + "[" + zshText(option->get_description()) + "]";
      if (takesValue(*option)) {
        entry += ":" + zshText(valueName(*option)) + ":" + zshAction(*option);
      }
      std::printf(" %s", quoted(entry).c_str());
    }
    for (const CLI::Option* option : optionsOf(*command, true)) {
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
    for (const CLI::Option* option : optionsOf(*command, false)) {
      const auto choices = choicesOf(*option);
      std::string rest = takesValue(*option) ? " -x" : "";
      if (!choices.empty()) rest += " -a " + quoted(joined(choices));
      std::printf("complete -c lumora %s -l %s%s -d %s\n", condition.c_str(),
                  option->get_lnames().front().c_str(), rest.c_str(),
                  quoted(option->get_description()).c_str());
    }
    for (const CLI::Option* option : optionsOf(*command, true)) {
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
  void (*write)(const CLI::App&) = kind == "man"    ? describeCommands
                                   : kind == "bash" ? writeBash
                                   : kind == "zsh"  ? writeZsh
                                   : kind == "fish" ? writeFish
                                                    : nullptr;
  if (write == nullptr) {
    std::fprintf(stderr, "usage: describe_commands man|bash|zsh|fish|host\n");
    return 2;
  }
  tool::withCommands(write);
  return 0;
} catch (const std::exception& error) {
  std::fprintf(stderr, "describe_commands: %s\n", error.what());
  return 1;
}
