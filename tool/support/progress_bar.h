// Progress on a terminal: one line that grows. Elsewhere, or with NO_COLOR in the environment, it
// prints nothing.
#pragma once

#include <string>

namespace tool {

class ProgressBar {
 public:
  ProgressBar(std::string label, int total);
  // Leaves the terminal with an empty line.
  ~ProgressBar();
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;

  void show(int done) const;

 private:
  const std::string label_;
  const int total_;
  const bool isDrawn_;
};

}  // namespace tool
