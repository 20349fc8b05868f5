#include "tool/run_command.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>

#include <poll.h>
#include <sys/inotify.h>
#include <sys/signalfd.h>
#include <sys/wait.h>
#include <unistd.h>

#include "host/host_options.h"
#include "settings/control_names.h"
#include "tool/bus_daemon.h"
#include "tool/child_process.h"
#include "tool/failure.h"
#include "tool/file_lock.h"
#include "tool/set_command.h"

namespace tool {
namespace {

using std::chrono::steady_clock;

struct RunWords {
  std::string gif;
  std::optional<double> seconds;
  host::HostOptions options;
};

std::string besideThisProgram(const char* name) {
  return std::filesystem::read_symlink("/proc/self/exe").replace_filename(name);
}

platform::FileDescriptor blockedSignals() {
  sigset_t signals;
  sigemptyset(&signals);
  for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGCHLD}) sigaddset(&signals, signal);
  sigprocmask(SIG_BLOCK, &signals, nullptr);
  return platform::FileDescriptor(signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK));
}

// Readable when something about the file has changed, also when it is deleted.
platform::FileDescriptor changesOf(const std::filesystem::path& file) {
  platform::FileDescriptor changes(inotify_init1(IN_CLOEXEC | IN_NONBLOCK));
  inotify_add_watch(changes.get(), file.c_str(), IN_ATTRIB);
  return changes;
}

// The home screen with its bus, from start to end.
class HostRun {
 public:
  HostRun(const DeviceFolder& device, const RunWords& words, const std::optional<ChosenGif>& gif)
      : device_(device),
        words_(words),
        gif_(gif),
        signals_(blockedSignals()),
        lock_(device.hostLockFile(), true),
        lockChanges_(changesOf(device.hostLockFile())) {
    takeLock();
    if (auto address = device.busAddress()) BusDaemon::removeRemains(*address);
    bus_ = std::make_unique<BusDaemon>(device.busLog());
    device.setBusAddress(bus_->address());
    start();
  }

  ~HostRun() {
    if (process_ > 0) endProgram(process_);
    device_.forgetBusAddress();
  }
  HostRun(const HostRun&) = delete;
  HostRun& operator=(const HostRun&) = delete;

  int run() {
    while (!hasEnded()) {
      if (!isLaunched_) tryToGreet();
      if (isTimeUp() || waitForSignal()) break;
    }
    return process_ > 0 ? 0 : exitCode();
  }

 private:
  // A home screen that is just ending is waited for.
  void takeLock() {
    constexpr Seconds patience{2};
    if (!HostConnection::find(device_) && lock_.take(patience)) return;
    throw Failure("a home screen is running for " + device_.path().string() +
                  " already; end it with: lumora stop");
  }

  void start() {
    std::vector<std::string> arguments{besideThisProgram("springboard"),
                                       "--root",
                                       device_.path(),
                                       "--bus",
                                       bus_->address(),
                                       "--library",
                                       besideThisProgram("Lumora8.so")};
    for (const std::string& argument : host::hostArguments(words_.options)) {
      arguments.push_back(argument);
    }
    process_ = startProgram(arguments);
  }

  bool hasEnded() {
    if (waitpid(process_, &status_, WNOHANG) != process_) return false;
    process_ = -1;
    return true;
  }

  int exitCode() const {
    if (WIFSIGNALED(status_)) {
      throw Failure("the home screen was ended by signal " + std::to_string(WTERMSIG(status_)));
    }
    if (WEXITSTATUS(status_) == exitCodeOfMissingProgram) {
      throw Failure("cannot start springboard, which belongs beside lumora");
    }
    // It has said why itself.
    return WEXITSTATUS(status_) == 0 ? ExitCode::Done : ExitCode::Failed;
  }

  void tryToGreet() {
    auto host = HostConnection::find(device_);
    if (!host) return;
    isLaunched_ = true;
    if (words_.seconds) end_ = TimeLimit(Seconds(*words_.seconds)).end();
    if (gif_) {
      FileLock handOverLock(device_.handOverLockFile());
      handOverLock.take(usualTimeout);
      handOver(*host, lumora::ScreenLocation::Shared, *gif_, TimeLimit(usualTimeout));
      host->post(lumora::control::updateAnimating);
    }
    std::printf("home screen running (%s, files in %s); Ctrl-C or `lumora stop` ends it\n",
                words_.options.display.c_str(), device_.path().c_str());
    if (words_.options.display == "window") std::printf("in the window, ? lists the keys\n");
    std::fflush(stdout);
  }

  // No command could reach the home screen any more.
  void checkFolder() {
    char changes[4096];
    while (read(lockChanges_.get(), changes, sizeof changes) > 0) {
    }
    if (!lock_.isGone()) return;
    throw Failure("the device's folder " + device_.path().string() +
                  " has been deleted; the home screen ends with it");
  }

  bool isTimeUp() const { return end_ && steady_clock::now() >= *end_; }

  // Sleeps until a signal, or until there is something to look at; whether it is a signal to end.
  bool waitForSignal() {
    constexpr int launchPause = 20;
    constexpr int longestPause = 3600 * 1000;
    int pause = isLaunched_ ? longestPause : launchPause;
    if (end_) {
      const auto rest =
          std::chrono::ceil<std::chrono::milliseconds>(*end_ - steady_clock::now()).count();
      pause = static_cast<int>(std::clamp<std::int64_t>(rest, 0, pause));
    }
    pollfd waiting[] = {{signals_.get(), POLLIN, 0}, {lockChanges_.get(), POLLIN, 0}};
    poll(waiting, std::size(waiting), pause);
    checkFolder();
    signalfd_siginfo info{};
    bool isToEnd = false;
    while (read(signals_.get(), &info, sizeof info) > 0) {
      isToEnd = isToEnd || info.ssi_signo != SIGCHLD;
    }
    return isToEnd;
  }

  const DeviceFolder& device_;
  const RunWords& words_;
  const std::optional<ChosenGif>& gif_;
  const platform::FileDescriptor signals_;
  FileLock lock_;
  const platform::FileDescriptor lockChanges_;
  std::unique_ptr<BusDaemon> bus_;
  pid_t process_ = -1;
  int status_ = 0;
  bool isLaunched_ = false;
  std::optional<steady_clock::time_point> end_;
};

int runHost(const DeviceFolder& device, const RunWords& words,
            const std::optional<ChosenGif>& gif) {
  return HostRun(device, words, gif).run();
}

}  // namespace

void addRunCommand(CLI::App& lumora, Context& context) {
  auto words = std::make_shared<RunWords>();
  CLI::App* command = lumora.add_subcommand("run", "start the home screen and stay with it");
  command->add_option("GIF", words->gif, "the wallpaper for both screens");
  host::addHostOptions(*command, words->options);
  constexpr long longestRun = 100'000'000;
  command->add_option("--for", words->seconds, "end by itself after this time")
      ->check(numberUpTo(longestRun))
      ->type_name("SECONDS");
  command->callback([&context, words] {
    context.action = [&context, words] {
      std::optional<ChosenGif> gif;
      if (!words->gif.empty()) gif = readGif(words->gif);
      return runHost(context.device(), *words, gif);
    };
  });
}

}  // namespace tool
