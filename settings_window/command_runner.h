// Performs `lumora` commands in processes of their own, so that the window never waits, and a
// change that has begun is completed even if the window is closed. Main thread.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace settings_window {

using Words = std::vector<std::string>;

struct CommandResult {
  int exitCode = 0;
  // What the command printed, without its progress.
  std::string output;
  // The message of a failure, without the name of the program.
  std::string problem;
};

class CommandRunner {
 public:
  using Done = std::function<void(const CommandResult&)>;
  using Progress = std::function<void(int done, int total)>;

  // program: path of `lumora`. root: value of --root, or "".
  CommandRunner(std::string program, std::string root);

  // Starts a command. Calls progress for each step that it prints, and done once, later. Neither is
  // called after the main loop has ended.
  void run(const Words& words, Done done, Progress progress = nullptr) const;

 private:
  const std::string program_;
  const std::string root_;
};

// Performs commands of one kind, one at a time. Of those that are requested in the meantime, only
// the last is performed. Main thread.
class LatestCommand {
 public:
  // runner must outlive this object, and both the main loop.
  explicit LatestCommand(const CommandRunner& runner) : runner_(runner) {}

  void run(Words words, CommandRunner::Done done, CommandRunner::Progress progress = nullptr);
  bool isRunning() const { return isRunning_; }

 private:
  void start();

  const CommandRunner& runner_;
  bool isRunning_ = false;
  Words next_;
  CommandRunner::Done done_;
  CommandRunner::Progress progress_;
};

}  // namespace settings_window
