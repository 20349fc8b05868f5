// A program whose first argument is a command: what its help says beside its commands.
#pragma once

#include <string>
#include <vector>

#include "command_line/command_groups.h"

namespace command_line {

struct Program {
  std::string name;
  // A sentence.
  std::string purpose;
  // What --version prints.
  std::string version;
  // Where more can be read: the last line of the help, or "".
  std::string more;
  std::vector<GroupOfNames> groups;
  // Returns command lines, which may end with a comment. name: of a command; "" gives the examples
  // of the program itself.
  std::vector<std::string> (*examplesOf)(const std::string& name);
};

}  // namespace command_line
