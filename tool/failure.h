// How a command ends without having done what it was asked for.
#pragma once

#include <stdexcept>
#include <string>

namespace tool {

enum ExitCode { Done = 0, Failed = 1, WrongUse = 2, NoHost = 3 };

// The message is one line that says what is wrong and what to do.
class Failure : public std::runtime_error {
 public:
  explicit Failure(const std::string& message, ExitCode code = ExitCode::Failed)
      : std::runtime_error(message), code_(code) {}
  ExitCode code() const { return code_; }

 private:
  ExitCode code_;
};

}  // namespace tool
