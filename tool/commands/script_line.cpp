#include "tool/commands/script_line.h"

#include "command_line/failure.h"

namespace tool {

using command_line::ExitCode;
using command_line::Failure;

namespace {

constexpr auto space = " \t\r";

// Returns the word that begins at this index, and moves the index past it.
std::string takeWord(const std::string& line, std::size_t& at) {
  std::string word;
  while (at < line.size() && std::string(space).find(line[at]) == std::string::npos) {
    const char mark = line[at++];
    if (mark != '"' && mark != '\'') {
      word += mark;
      continue;
    }
    const std::size_t end = line.find(mark, at);
    if (end == std::string::npos) throw Failure("unterminated quote", ExitCode::WrongUse);
    word.append(line, at, end - at);
    at = end + 1;
  }
  return word;
}

}  // namespace

std::vector<std::string> wordsOfLine(const std::string& line) {
  std::vector<std::string> words;
  std::size_t at = line.find_first_not_of(space);
  while (at < line.size() && line[at] != '#') {
    words.push_back(takeWord(line, at));
    at = line.find_first_not_of(space, at);
  }
  return words;
}

}  // namespace tool
