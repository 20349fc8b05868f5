// Exit codes, and the exception of work that cannot be done.
#pragma once

#include <stdexcept>
#include <string>
#include <utility>

namespace command_line {

enum ExitCode { Done = 0, Failed = 1, WrongUse = 2, NoHost = 3 };

// The message is one line that says what is wrong and, if it is not obvious, what to do.
class Failure : public std::runtime_error {
 public:
  explicit Failure(const std::string& message, ExitCode code = ExitCode::Failed,
                   std::string help = "")
      : std::runtime_error(message), code_(code), help_(std::move(help)) {}
  ExitCode code() const { return code_; }
  // A line that says where to find help if the command was used wrongly, else "".
  const std::string& help() const { return help_; }

 private:
  ExitCode code_;
  std::string help_;
};

}  // namespace command_line
