#include "tool/support/interruption.h"

#include <atomic>
#include <csignal>
#include <cstring>

#include <unistd.h>

namespace tool {
namespace {

constexpr int signals[] = {SIGINT, SIGTERM, SIGHUP};

std::atomic<const char*> happened = nullptr;
struct sigaction before[std::size(signals)];

void say(const char* text) {
  [[maybe_unused]] const ssize_t size = write(STDERR_FILENO, text, std::strlen(text));
}

// Only what a signal handler may do.
void end(int signal) {
  if (const char* text = happened) {
    if (isatty(STDOUT_FILENO)) say("\r\033[K");
    say("lumora: interrupted; ");
    say(text);
    say("\n");
  }
  std::signal(signal, SIG_DFL);
  raise(signal);
}

}  // namespace

Interruption::Interruption() {
  struct sigaction action {};
  action.sa_handler = end;
  for (std::size_t at = 0; at < std::size(signals); ++at) {
    sigaction(signals[at], nullptr, &before[at]);
    // What whoever started the command wants ignored stays ignored.
    if (before[at].sa_handler != SIG_IGN) sigaction(signals[at], &action, nullptr);
  }
}

Interruption::~Interruption() {
  happened = nullptr;
  for (std::size_t at = 0; at < std::size(signals); ++at) {
    sigaction(signals[at], &before[at], nullptr);
  }
}

void Interruption::whatHasHappened(const char* text) {
  happened = text;
}

}  // namespace tool
