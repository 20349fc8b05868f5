// What a command says when it is interrupted (Ctrl-C, TERM, HUP) in the middle of something that
// cannot be undone. Without one of these objects it just ends.
#pragma once

namespace tool {

class Interruption {
 public:
  Interruption();
  ~Interruption();
  Interruption(const Interruption&) = delete;
  Interruption& operator=(const Interruption&) = delete;

  // From now on this is said. The text must live as long as the program.
  static void whatHasHappened(const char* text);
};

}  // namespace tool
