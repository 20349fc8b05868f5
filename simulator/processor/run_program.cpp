// Runs the shipped lumora on this processor: its initializers, and commands from the parsing of
// their words to what they store and post.
//
// usage: run_program PROGRAM

#include <cstdio>
#include <sstream>
#include <string>
#include <vector>

#include "expectation.h"
#include "fake_host.h"
#include "unwinding.h"

namespace {

struct Command {
  const char* line;
  std::vector<std::string> events;
};

const Command commands[] = {
    {"put DOCK_HEIGHT 96", {"store DOCK_HEIGHT 96"}},
    {"enable", {"store ENABLED TRUE"}},
    {"post com.example.any", {"say com.example.any"}},
    {"dock off", {"store DOCK_ENABLED FALSE", "say com.brightfen.lumora.updateWallpaper"}},
    {"mode SEPARATE",
     {"store MODE_INDEX 0", "say kLWGIFViewNeedsToRemoveUnneededViewNotification",
      "say com.brightfen.lumora.updateAnimating"}},
};

int perform(MachOImage::Main* program, const std::string& line) {
  std::vector<std::string> words{"lumora"};
  std::istringstream stream(line);
  for (std::string word; stream >> word;) words.push_back(word);
  std::vector<char*> pointers;
  for (std::string& word : words) pointers.push_back(word.data());
  return program(static_cast<int>(pointers.size()), pointers.data());
}

}  // namespace

int main(int count, char** words) {
  if (count != 2) {
    std::fprintf(stderr, "usage: run_program PROGRAM\n");
    return 2;
  }
  const MachOImage program(words[1], resolve);
  adoptClasses(program);
  setUnwoundImage(program);
  program.initialize();
  bool isRight = isAsExpected("nothing at load", takeEvents(), {});
  for (const Command& command : commands) {
    const int code = perform(program.mainFunction(), command.line);
    auto events = takeEvents();
    if (code != 0) events.push_back("exit code " + std::to_string(code));
    isRight = isAsExpected(command.line, events, command.events) && isRight;
  }
  return isRight ? 0 : 1;
}
