#include "command_line/progress_bar.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include <unistd.h>

namespace command_line {
namespace {

// See https://no-color.org: set, and not empty.
bool wantsPlainOutput() {
  const char* noColor = std::getenv("NO_COLOR");
  return noColor != nullptr && *noColor != '\0';
}

}  // namespace

ProgressBar::ProgressBar(std::string label, int total, ProgressStyle style)
    : label_(std::move(label)),
      total_(std::max(total, 1)),
      style_(style),
      isDrawn_(style == ProgressStyle::Bar && isatty(STDOUT_FILENO) && !wantsPlainOutput()) {
  show(0);
}

ProgressBar::~ProgressBar() {
  if (!isDrawn_) return;
  std::printf("\r\033[K");
  std::fflush(stdout);
}

void ProgressBar::show(int done) const {
  if (style_ == ProgressStyle::Lines) {
    std::printf("{\"done\":%d,\"total\":%d}\n", done, total_);
    std::fflush(stdout);
  }
  if (!isDrawn_) return;
  constexpr int width = 32;
  const int filled = width * std::min(done, total_) / total_;
  const std::string bar = std::string(static_cast<std::size_t>(filled), '#') +
                          std::string(static_cast<std::size_t>(width - filled), '.');
  std::printf("\r%s [%s] %d/%d", label_.c_str(), bar.c_str(), done, total_);
  std::fflush(stdout);
}

}  // namespace command_line
