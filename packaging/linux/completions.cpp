#include "packaging/linux/completions.h"

#include <cstdio>
#include <set>
#include <string>
#include <vector>

#include "command_line/option_words.h"
#include "packaging/linux/completion_words.h"

namespace completions {
namespace {

using command_line::longName;
using command_line::optionsOf;
using command_line::takesValue;

std::string joined(const std::vector<std::string>& words, const std::string& separator = " ") {
  return CLI::detail::join(words, separator);
}

std::vector<std::string> longNames(const CLI::App& app) {
  std::vector<std::string> names;
  for (const CLI::Option* option : optionsOf(app)) names.push_back(longName(*option));
  return names;
}

std::vector<const CLI::App*> commandsOf(const CLI::App& lumora) {
  return lumora.get_subcommands({});
}

std::vector<std::string> commandNames(const CLI::App& lumora) {
  std::vector<std::string> names;
  for (const CLI::App* command : commandsOf(lumora)) names.push_back(command->get_name());
  return names;
}

// Every option that takes a value. The word behind it is not an argument.
std::vector<std::string> valueOptions(const CLI::App& lumora) {
  std::set<std::string> names;
  auto collect = [&names](const CLI::App& app) {
    for (const CLI::Option* option : optionsOf(app)) {
      if (takesValue(*option)) names.insert(longName(*option));
    }
  };
  collect(lumora);
  for (const CLI::App* command : commandsOf(lumora)) collect(*command);
  return {names.begin(), names.end()};
}

std::string quoted(std::string text) {
  for (std::size_t at = 0; (at = text.find('\'', at)) != text.npos; at += 4) {
    text.replace(at, 1, "'\\''");
  }
  return "'" + text + "'";
}

// ---- bash

// Returns assignments to what _lumora offers.
std::string bashOffer(const Offer& offer) {
  std::string words = joined(offer.words);
  if (!offer.command.empty()) words += "$(" + offer.command + ")";
  const char* kind = offer.hasFiles ? "-f" : offer.hasFolders ? "-d" : "";
  return "words=\"" + words + "\" files=" + kind;
}

void writeBashPlaces(const CLI::App& command) {
  int place = 0;
  for (const Offer& offer : offersByPlace(command)) {
    std::printf("    %s:%d) %s ;;\n", command.get_name().c_str(), place++,
                bashOffer(offer).c_str());
  }
}

void writeBashValues(const CLI::App& app, const std::string& pattern) {
  for (const CLI::Option* option : optionsOf(app)) {
    if (!takesValue(*option)) continue;
    std::printf("    %s:%s) %s ;;\n", pattern.c_str(), longName(*option).c_str(),
                bashOffer(offerFor(*option)).c_str());
  }
}

}  // namespace

void writeBash(const CLI::App& lumora) {
  std::printf(R"script(# Completions of lumora for bash.
_lumora() {
  local word=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
  local command= place=-1 at
  for ((at = 1; at < COMP_CWORD; at++)); do
    case ${COMP_WORDS[at]} in
      %s) ((at++)) ;;
      -*) ;;
      *)
        [ -z "$command" ] && command=${COMP_WORDS[at]}
        ((place++))
        ;;
    esac
  done
  local words= files=
  case $command:$place in
    :*) words='%s %s' ;;
)script",
              joined(valueOptions(lumora), "|").c_str(), joined(commandNames(lumora)).c_str(),
              joined(longNames(lumora)).c_str());
  for (const CLI::App* command : commandsOf(lumora)) writeBashPlaces(*command);
  std::printf("  esac\n  case $command:$previous in\n");
  writeBashValues(lumora, "*");
  for (const CLI::App* command : commandsOf(lumora)) {
    writeBashValues(*command, command->get_name());
  }
  std::printf("  esac\n  [[ $word = -* ]] && case $command in\n");
  for (const CLI::App* command : commandsOf(lumora)) {
    std::printf("    %s) words='%s' ;;\n", command->get_name().c_str(),
                joined(longNames(*command)).c_str());
  }
  std::printf(R"script(  esac
  COMPREPLY=($(compgen -W "$words" -- "$word"))
  if [ -n "$files" ]; then
    mapfile -t -O ${#COMPREPLY[@]} COMPREPLY < <(compgen $files -- "$word")
    compopt -o filenames
  fi
}
complete -F _lumora lumora
)script");
}

// ---- zsh

namespace {

// Escapes the characters that _arguments and _describe would take for their own.
std::string zshText(const std::string& text) {
  std::string result;
  for (const char letter : text) {
    if (letter == ':' || letter == '[' || letter == ']' || letter == '\\') result += '\\';
    result += letter;
  }
  return result;
}

std::string zshAction(const Offer& offer) {
  const std::string files = offer.hasFiles ? "_files" : offer.hasFolders ? "_files -/" : "";
  std::string words = joined(offer.words);
  if (!offer.command.empty()) words += "${(f)\"$(" + offer.command + ")\"}";
  if (words.empty()) return files.empty() ? " " : files;
  if (files.empty()) return "(" + words + ")";
  return " _lumora_words_or_files " + words;
}

std::string zshOption(const CLI::Option& option) {
  constexpr int many = 2;
  const std::string repeats = option.get_expected_max() >= many ? "*" : "";
  const std::string entry =
      repeats + longName(option) + "[" + zshText(option.get_description()) + "]";
  if (!takesValue(option)) return quoted(entry);
  return quoted(entry + ":" + zshText(command_line::valueName(option)) + ":" +
                zshAction(offerFor(option)));
}

std::string zshOptions(const CLI::App& app) {
  std::string entries;
  for (const CLI::Option* option : optionsOf(app)) entries += " " + zshOption(*option);
  return entries;
}

void writeZshCommand(const CLI::App& command) {
  std::printf("      %s) _arguments $anywhere%s", command.get_name().c_str(),
              zshOptions(command).c_str());
  const auto arguments = command_line::argumentsOf(command);
  const auto offers = offersByPlace(command);
  for (std::size_t place = 0; place < arguments.size(); ++place) {
    const std::string entry =
        ":" + zshText(arguments[place]->get_name()) + ":" + zshAction(offers[place]);
    std::printf(" %s", quoted(entry).c_str());
  }
  std::printf(" ;;\n");
}

}  // namespace

void writeZsh(const CLI::App& lumora) {
  std::printf(R"script(#compdef lumora
# Completions of lumora for zsh.
_lumora_words_or_files() {
  _alternative "words:word:($*)" 'files:file:_files'
}
local -a commands anywhere
commands=(
)script");
  for (const CLI::App* command : commandsOf(lumora)) {
    const std::string entry = command->get_name() + ":" + zshText(command->get_description());
    std::printf("  %s\n", quoted(entry).c_str());
  }
  std::printf(R"script()
anywhere=(%s)
local curcontext=$curcontext state line
_arguments -C -A '-*'%s \
  '1: :->command' '*:: :->arguments'
case $state in
  command) _describe command commands ;;
  arguments)
    case $words[1] in
)script",
              zshOption(*lumora.get_option("--root")).c_str(), zshOptions(lumora).c_str());
  for (const CLI::App* command : commandsOf(lumora)) writeZshCommand(*command);
  std::printf("    esac\n    ;;\nesac\n");
}

// ---- fish

namespace {

// Returns the options of `complete` for an offer.
std::string fishOffer(const Offer& offer) {
  std::string words = joined(offer.words);
  if (!offer.command.empty()) words += "(" + offer.command + ")";
  if (offer.hasFolders) words += "(__fish_complete_directories)";
  return (words.empty() ? "" : " -a " + quoted(words)) + (offer.hasFiles ? " -F" : "");
}

void writeFishOptions(const CLI::App& app, const std::string& condition) {
  for (const CLI::Option* option : optionsOf(app)) {
    const Offer offer = offerFor(*option);
    std::string value = takesValue(*option) ? fishOffer(offer) : "";
    if (takesValue(*option)) value += offer.hasFiles ? " -r" : " -x";
    std::printf("complete -c lumora -n %s -l %s%s -d %s\n", quoted(condition).c_str(),
                option->get_lnames().front().c_str(), value.c_str(),
                quoted(option->get_description()).c_str());
  }
}

void writeFishPlaces(const CLI::App& command) {
  int place = 0;
  for (const Offer& offer : offersByPlace(command)) {
    const std::string condition =
        "__lumora_is_at " + command.get_name() + " " + std::to_string(place++);
    if (offer.isEmpty()) continue;
    std::printf("complete -c lumora -n %s%s\n", quoted(condition).c_str(),
                fishOffer(offer).c_str());
  }
}

}  // namespace

void writeFish(const CLI::App& lumora) {
  std::printf(R"script(# Completions of lumora for fish.
# Succeeds if this command has been typed, "" for none, and, if given, this many words after it.
function __lumora_is_at
    set -l command ''
    set -l place -1
    set -l skips 0
    set -l words (commandline -poc)
    set -e words[1]
    for word in $words
        if test $skips = 1
            set skips 0
            continue
        end
        switch $word
            case %s
                set skips 1
            case '-*'
            case '*'
                test -z "$command"; and set command $word
                set place (math $place + 1)
        end
    end
    test "$command" = "$argv[1]"; and test -z "$argv[2]" -o "$place" = "$argv[2]"
end
complete -c lumora -f
)script",
              joined(valueOptions(lumora)).c_str());
  writeFishOptions(lumora, "__lumora_is_at ''");
  for (const CLI::App* command : commandsOf(lumora)) {
    std::printf("complete -c lumora -n \"__lumora_is_at ''\" -a %s -d %s\n",
                command->get_name().c_str(), quoted(command->get_description()).c_str());
    writeFishOptions(*command, "__lumora_is_at " + command->get_name());
    writeFishPlaces(*command);
  }
}

}  // namespace completions
