// A progress bar on stdout. It prints nothing if stdout is not a terminal or if NO_COLOR is set.
#pragma once

#include <string>

namespace tool {

class ProgressBar {
 public:
  ProgressBar(std::string label, int total);
  // Erases the bar.
  ~ProgressBar();
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;

  // Redraws the bar. done: how many of total are done.
  void show(int done) const;

 private:
  const std::string label_;
  const int total_;
  const bool isDrawn_;
};

}  // namespace tool
