// Shows on stdout how much of a long work is done.
#pragma once

#include <string>

namespace command_line {

enum class ProgressStyle {
  // A bar; nothing if stdout is not a terminal or if NO_COLOR is set.
  Bar,
  // A line for every step, for other programs: {"done":3,"total":60}
  Lines,
};

class ProgressBar {
 public:
  ProgressBar(std::string label, int total, ProgressStyle style = ProgressStyle::Bar);
  // Erases the bar.
  ~ProgressBar();
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;

  // done: how many of total are done.
  void show(int done) const;

 private:
  const std::string label_;
  const int total_;
  const ProgressStyle style_;
  const bool isDrawn_;
};

}  // namespace command_line
