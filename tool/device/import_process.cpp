#include "tool/device/import_process.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <optional>
#include <sstream>
#include <string>

#include <fcntl.h>
#include <poll.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include "command_line/failure.h"
#include "platform/linux/files/file_contents.h"
#include "platform/linux/files/signal_descriptor.h"

namespace tool {

using command_line::ExitCode;
using command_line::Failure;
using command_line::ProgressBar;
using command_line::ProgressStyle;

namespace {

// Sends lines from the importing process to the waiting one: its progress ("progress"), the end
// ("done") or the reason of a failure ("failure").
class Report {
 public:
  explicit Report(platform::backend::FileDescriptor pipe) : pipe_(std::move(pipe)) {}

  void progress(const ImportProgress& now) {
    std::ostringstream line;
    line << "progress " << now.isChanging << ' ' << now.isHandedOver << ' ' << now.framesFound
         << ' ' << now.state;
    send(line.str());
  }
  void done() { send("done"); }
  void failure(const Failure& failure) {
    std::string text = failure.what();
    std::ranges::replace(text, '\n', ' ');
    send("failure " + std::to_string(static_cast<int>(failure.code())) + ' ' + text);
  }

 private:
  // Ignores errors, because the waiting process may have ended.
  void send(const std::string& line) {
    const std::string whole = line + '\n';
    platform::backend::writeAll(
        pipe_, {reinterpret_cast<const std::uint8_t*>(whole.data()), whole.size()});
  }

  platform::backend::FileDescriptor pipe_;
};

void setSignals(int how) {
  sigset_t signals;
  sigemptyset(&signals);
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&signals, signal);
  sigprocmask(how, &signals, nullptr);
}

[[noreturn]] void work(Report report, const DeviceFolder& device, const Import& import) {
  setsid();
  std::signal(SIGPIPE, SIG_IGN);
  setSignals(SIG_UNBLOCK);
  const int nothing = open("/dev/null", O_RDWR | O_CLOEXEC);
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) dup2(nothing, stream);
  try {
    importWallpaper(device, import, [&report](const ImportProgress& progress) {
      if (progress.isChanging) setSignals(SIG_BLOCK);
      report.progress(progress);
    });
    report.done();
    _exit(EXIT_SUCCESS);
  } catch (const Failure& failure) {
    report.failure(failure);
  } catch (const std::exception& error) {
    report.failure(Failure(error.what()));
  }
  _exit(EXIT_FAILURE);
}

// The parent's side: reads the lines of the importing process.
class Waiting {
 public:
  Waiting(pid_t worker, platform::backend::FileDescriptor pipe, const Import& import,
          const platform::backend::FileDescriptor& signals, ProgressStyle style)
      : worker_(worker),
        pipe_(std::move(pipe)),
        limit_(import.limit),
        signals_(signals),
        bar_("making frames", import.frames, style) {}

  void await(WaitFor end) {
    while (!isDone_ && !(isHandedOver_ && end == WaitFor::Handover)) {
      // Until the GIF is handed over, the limit is the child's, and the change itself is short.
      if (limit_.isOver() && isHandedOver_) {
        throw Failure(
            "the home screen is still making frames after the timeout and will play them; " +
            state_);
      }
      if (!hearMore()) throw Failure("the importing process was ended; " + state_);
    }
  }

  // The signal that is to end this process, or 0.
  int interruption() const { return interruption_; }
  const std::string& state() const { return state_; }

 private:
  // Returns false if this process was interrupted or the child has ended.
  bool hearMore() {
    pollfd ends[] = {{pipe_.get(), POLLIN, 0}, {signals_.get(), POLLIN, 0}};
    constexpr Seconds maxPause{1};
    const Seconds pause = isHandedOver_ ? std::min(limit_.left(), maxPause) : maxPause;
    poll(ends, std::size(ends),
         static_cast<int>(std::chrono::ceil<std::chrono::milliseconds>(pause).count()));
    signalfd_siginfo info{};
    if (read(signals_.get(), &info, sizeof info) > 0) {
      interruption_ = static_cast<int>(info.ssi_signo);
      // The child ignores the signal once it changes the device, and still reports its progress.
      kill(worker_, SIGTERM);
      while (!isHandedOver_ && readSome()) {
      }
      return false;
    }
    return ends[0].revents == 0 || readSome();
  }

  // Waits for the next lines. Returns false if the child has closed the pipe.
  bool readSome() {
    char buffer[4096];
    const ssize_t size = read(pipe_.get(), buffer, sizeof buffer);
    if (size <= 0) return false;
    unread_.append(buffer, static_cast<std::size_t>(size));
    for (std::size_t end = 0; (end = unread_.find('\n')) != unread_.npos;) {
      const std::string line = unread_.substr(0, end);
      unread_.erase(0, end + 1);
      take(line);
    }
    return true;
  }

  void take(const std::string& line) {
    std::istringstream words(line);
    std::string kind;
    words >> kind;
    if (kind == "progress") {
      bool isChanging = false;
      int framesFound = 0;
      words >> isChanging >> isHandedOver_ >> framesFound >> std::ws;
      std::getline(words, state_);
      if (isHandedOver_) bar_.show(framesFound);
    } else if (kind == "failure") {
      int code = 0;
      std::string text;
      words >> code >> std::ws;
      std::getline(words, text);
      throw Failure(text, static_cast<ExitCode>(code));
    } else {
      isDone_ = true;
    }
  }

  const pid_t worker_;
  const platform::backend::FileDescriptor pipe_;
  const TimeLimit limit_;
  const platform::backend::FileDescriptor& signals_;
  const ProgressBar bar_;
  std::string unread_;
  std::string state_ = ImportProgress().state;
  bool isHandedOver_ = false;
  bool isDone_ = false;
  int interruption_ = 0;
};

[[noreturn]] void endBy(int signal, const std::string& state) {
  std::fprintf(stderr, "lumora: interrupted; %s\n", state.c_str());
  std::signal(signal, SIG_DFL);
  setSignals(SIG_UNBLOCK);
  raise(signal);
  _exit(EXIT_FAILURE);
}

}  // namespace

void importInOwnProcess(const DeviceFolder& device, const Import& import, WaitFor end,
                        ProgressStyle style) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) {
    throw Failure(std::string("cannot start a process: ") + std::strerror(errno));
  }
  platform::backend::FileDescriptor reader(ends[0]);
  platform::backend::FileDescriptor writer(ends[1]);
  const auto signals = platform::backend::signalDescriptor({SIGINT, SIGTERM, SIGHUP});
  const pid_t worker = fork();
  if (worker < 0) throw Failure(std::string("cannot start a process: ") + std::strerror(errno));
  if (worker == 0) work(Report(std::move(writer)), device, import);
  writer = platform::backend::FileDescriptor();
  std::optional<Waiting> waiting(std::in_place, worker, std::move(reader), import, signals, style);
  try {
    waiting->await(end);
  } catch (const Failure&) {
    if (waiting->interruption() == 0) throw;
    const int signal = waiting->interruption();
    const std::string state = waiting->state();
    waiting.reset();
    endBy(signal, state);
  }
}

}  // namespace tool
