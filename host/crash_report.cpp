#include "host/crash_report.h"

#include <array>
#include <atomic>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <utility>

#include <dlfcn.h>
#include <execinfo.h>
#include <unistd.h>

#include "host/throw_record.h"

namespace host {
namespace {

constexpr int crashSignals[] = {SIGSEGV, SIGBUS, SIGILL, SIGFPE, SIGABRT};

std::vector<std::string> watchedLibraries;
std::atomic<bool> isReported = false;
std::terminate_handler previousTerminate = nullptr;
// The stack may be what has overflowed.
alignas(std::max_align_t) std::array<char, 1 << 16> handlerStack;

void print(std::initializer_list<const char*> parts) {
  for (const char* part : parts) {
    [[maybe_unused]] const ssize_t size = write(STDERR_FILENO, part, std::strlen(part));
  }
}

// Returns the library that was called last, or nullptr if none is in the backtrace.
const char* libraryIn(const Backtrace& trace) {
  for (void* frame : trace.used()) {
    Dl_info info{};
    if (dladdr(frame, &info) == 0 || info.dli_fname == nullptr) continue;
    for (const std::string& library : watchedLibraries) {
      if (library == info.dli_fname) return library.c_str();
    }
  }
  return nullptr;
}

// Writes one report only: an uncaught exception ends with a signal, too.
void report(const char* problem, const char* details, const Backtrace& trace) {
  if (isReported.exchange(true)) return;
  const char* library = libraryIn(trace);
  print({"springboard: ", problem, library == nullptr ? "" : " in ",
         library == nullptr ? "" : library, details, "\n"});
  backtrace_symbols_fd(trace.frames.data(), trace.size, STDERR_FILENO);
}

// The signal ends the process when the handler returns, because SA_RESETHAND removes it.
void reportSignal(int signal) {
  report(sigdescr_np(signal), "", Backtrace::here());
  raise(signal);
}

[[noreturn]] void reportTermination() {
  report("uncaught exception", "", std::current_exception() ? lastThrow() : Backtrace::here());
  previousTerminate();
  std::abort();
}

// Nothing but the main function should end the process.
void reportExit() {
  const Backtrace trace = Backtrace::here();
  if (libraryIn(trace) == nullptr) return;
  report("exit", "", trace);
  std::abort();
}

void handle(int signal) {
  struct sigaction present {};
  sigaction(signal, nullptr, &present);
  if (present.sa_handler != SIG_DFL) return;
  struct sigaction handler {};
  handler.sa_handler = reportSignal;
  handler.sa_flags = SA_ONSTACK | static_cast<int>(SA_RESETHAND);
  sigaction(signal, &handler, nullptr);
}

}  // namespace

void reportCrashes(std::vector<std::string> libraries) {
  watchedLibraries = std::move(libraries);
  // The first one allocates memory.
  Backtrace::here();
  stack_t stack{};
  stack.ss_sp = handlerStack.data();
  stack.ss_size = handlerStack.size();
  sigaltstack(&stack, nullptr);
  for (const int signal : crashSignals) handle(signal);
  previousTerminate = std::set_terminate(reportTermination);
  std::atexit(reportExit);
}

void abortIfFromLibrary(const std::exception& exception) {
  if (libraryIn(lastThrow()) == nullptr) return;
  const std::string details = std::string(": ") + exception.what();
  report("uncaught exception", details.c_str(), lastThrow());
  std::abort();
}

}  // namespace host
