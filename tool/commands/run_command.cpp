#include "tool/commands/run_command.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>

#include <fcntl.h>
#include <poll.h>
#include <sys/inotify.h>
#include <sys/signalfd.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "host/options/host_options.h"
#include "platform/linux/files/device_root.h"
#include "platform/linux/files/signal_descriptor.h"
#include "settings/notification_names.h"
#include "tool/commands/scaling_choice.h"
#include "tool/device/bus_daemon.h"
#include "tool/device/file_lock.h"
#include "tool/device/frame_caches.h"
#include "tool/device/host_connection.h"
#include "tool/device/import_process.h"
#include "tool/device/stored_settings.h"
#include "tool/device/wallpaper_import.h"
#include "tool/support/background.h"
#include "tool/support/child_process.h"
#include "tool/support/failure.h"
#include "tool/support/progress_bar.h"
#include "tool/support/terminal.h"

namespace tool {
namespace {

using std::chrono::steady_clock;

struct RunOptions {
  std::string gif;
  // "" if none is given.
  std::string scaling;
  std::optional<double> seconds;
  bool isInBackground = false;
  host::HostOptions host;
};

constexpr auto busLogName = "bus.log";
constexpr auto scalingKey = "_SCALING_MODE";

// A launch takes about a tenth of a second, unless the machine is very busy.
constexpr Seconds maxLaunchTime{30};

std::string besideThisProgram(const char* name) {
  return std::filesystem::read_symlink("/proc/self/exe").replace_filename(name);
}

// Installed apart from the programs; built beside them.
std::string extensionLibrary() {
  std::string built = besideThisProgram("Lumora8.so");
  if (access(built.c_str(), F_OK) == 0) return built;
  return besideThisProgram(LUMORA_LIBRARY_DIR_FROM_PROGRAMS "/Lumora8.so");
}

// Returns a descriptor that becomes readable when the device folder, or one above it, may have been
// moved or deleted.
platform::backend::FileDescriptor movesOf(const DeviceFolder& device) {
  platform::backend::FileDescriptor moves(inotify_init1(IN_CLOEXEC | IN_NONBLOCK));
  const auto lock = device.path() / platform::backend::hostFolderName / FileLock::host;
  for (auto path = lock; path != path.root_path(); path = path.parent_path()) {
    inotify_add_watch(moves.get(), path.c_str(), IN_MOVE_SELF | IN_DELETE_SELF | IN_ATTRIB);
  }
  return moves;
}

bool isSameFile(int descriptor, const std::filesystem::path& path) {
  struct stat open {};
  struct stat named {};
  return fstat(descriptor, &open) == 0 && stat(path.c_str(), &named) == 0 &&
         open.st_dev == named.st_dev && open.st_ino == named.st_ino;
}

// The home screen and its bus. The constructor starts them and the destructor ends them. The
// arguments must outlive the object.
class HostRun {
 public:
  // Calls launched once the home screen has launched and the greeting is printed.
  HostRun(const DeviceFolder& device, const RunOptions& options,
          const std::optional<ChosenGif>& gif, const std::function<void()>& launched)
      : device_(device),
        options_(options),
        gif_(gif),
        launched_(launched),
        signals_(platform::backend::signalDescriptor({SIGINT, SIGTERM, SIGHUP, SIGCHLD})),
        lock_(device, FileLock::host, true),
        moves_(movesOf(device)) {
    takeLock();
    hasUnfinishedCache_ = removeUnfinishedCaches();
    const platform::backend::FileDescriptor busLog(
        openat(device.hostFolder(), busLogName,
               O_WRONLY | O_CREAT | O_TRUNC | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0600));
    bus_ = std::make_unique<BusDaemon>(busLog.get());
    device.setBusAddress(bus_->address());
    start();
  }

  ~HostRun() {
    if (import_ > 0) endProgram(import_);
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
  // Waits a moment for a home screen that is ending. Throws Failure if one is running.
  void takeLock() {
    constexpr Seconds patience{2};
    if (!HostConnection::find(device_) && lock_.take(patience)) return;
    throw Failure("a home screen is already running for " + device_.path().string() +
                  "; stop it with: lumora stop");
  }

  void start() {
    std::vector<std::string> arguments{besideThisProgram("springboard"),
                                       "--root",
                                       device_.path(),
                                       "--bus",
                                       bus_->address(),
                                       "--library",
                                       extensionLibrary()};
    for (const std::string& argument : host::hostArguments(options_.host)) {
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
      const bool isThere = access(besideThisProgram("springboard").c_str(), X_OK) == 0;
      throw Failure(isThere ? "cannot start springboard; check the free memory"
                            : "cannot start springboard: it must be in the same folder as lumora");
    }
    // It has printed the reason itself.
    return WEXITSTATUS(status_) == 0 ? ExitCode::Done : ExitCode::Failed;
  }

  void tryToGreet() {
    auto host = HostConnection::find(device_);
    if (!host && launchLimit_.isOver()) {
      throw Failure(
          "the home screen has not launched; check the free memory and the limit of open files; "
          "see also " +
          (device_.path() / platform::backend::hostFolderName / busLogName).string());
    }
    if (!host) return;
    isLaunched_ = true;
    // Launch starts only a wallpaper that has been installed before.
    if (hasUnfinishedCache_) host->post(lumora::control::updateAnimating);
    if (options_.seconds) end_ = TimeLimit(Seconds(*options_.seconds)).end();
    std::printf("home screen running (%s, files in %s); %s`lumora stop` stops it\n",
                host::nameOf(options_.host.display).c_str(), device_.path().c_str(),
                options_.isInBackground ? "" : "Ctrl-C or ");
    if (options_.host.display == host::DisplayKind::Window)
      std::printf("in the window, ? lists the keys\n");
    std::fflush(stdout);
    launched_();
    if (gif_) import_ = startProcess([this] { return import(); });
  }

  // Runs in a separate process, because importing a large GIF takes long.
  int import() const {
    try {
      const TimeLimit limit(maxImportTime);
      const lumora::Location& shared = lumora::locationOf(lumora::ScreenLocation::Shared);
      const FrameCheck found = checkFrames(*gif_);
      printDamage(found);
      const ProgressBar bar("making frames", found.shown);
      importWallpaper(device_, {shared, *gif_, found.shown, limit},
                      [&bar](const ImportProgress& progress) { bar.show(progress.framesFound); });
      return ExitCode::Done;
    } catch (const std::exception& error) {
      std::fprintf(stderr, "lumora: %s\n", printable(error.what(), STDERR_FILENO).c_str());
      return ExitCode::Failed;
    }
  }

  // Throws Failure if the device folder was moved or deleted: then no command can reach the home
  // screen.
  void checkFolder() {
    char changes[4096];
    while (read(moves_.get(), changes, sizeof changes) > 0) {
    }
    const bool isMoved =
        !isSameFile(device_.hostFolder(), device_.path() / platform::backend::hostFolderName);
    if (!isMoved && !lock_.isGone()) return;
    throw Failure("the device folder " + device_.path().string() +
                  " has been moved or deleted; the home screen has been stopped");
  }

  bool isTimeUp() const { return end_ && steady_clock::now() >= *end_; }

  // Sleeps until a signal, a change to the folder, or the next deadline. Returns true if the signal
  // asks this process to end.
  bool waitForSignal() {
    constexpr int launchPause = 20;
    constexpr int maxPause = 3600 * 1000;
    int pause = isLaunched_ ? maxPause : launchPause;
    if (end_) {
      const auto rest =
          std::chrono::ceil<std::chrono::milliseconds>(*end_ - steady_clock::now()).count();
      pause = static_cast<int>(std::clamp<std::int64_t>(rest, 0, pause));
    }
    pollfd waiting[] = {{signals_.get(), POLLIN, 0}, {moves_.get(), POLLIN, 0}};
    poll(waiting, std::size(waiting), pause);
    checkFolder();
    signalfd_siginfo info{};
    bool shouldStop = false;
    while (read(signals_.get(), &info, sizeof info) > 0) {
      shouldStop = shouldStop || info.ssi_signo != SIGCHLD;
    }
    return shouldStop;
  }

  const DeviceFolder& device_;
  const RunOptions& options_;
  const std::optional<ChosenGif>& gif_;
  const std::function<void()>& launched_;
  const platform::backend::FileDescriptor signals_;
  FileLock lock_;
  const platform::backend::FileDescriptor moves_;
  std::unique_ptr<BusDaemon> bus_;
  pid_t process_ = -1;
  pid_t import_ = -1;
  int status_ = 0;
  bool hasUnfinishedCache_ = false;
  bool isLaunched_ = false;
  const TimeLimit launchLimit_{maxLaunchTime};
  std::optional<steady_clock::time_point> end_;
};

// Stores the scaling. The wallpaper of a desktop fills the screen unless something else is stored.
void storeScaling(const RunOptions& options) {
  const bool isDesktop = options.host.display == host::DisplayKind::Desktop;
  for (const lumora::Location& location : lumora::locations) {
    if (!options.scaling.empty()) {
      storeSettingOf(location, scalingKey, options.scaling);
    } else if (isDesktop && !storedSetting(std::string(location.identifier) + scalingKey)) {
      storeSettingOf(location, scalingKey, "FILL");
    }
  }
}

// Says why there is no window, unless a script runs this.
void warnOfNoDisplay(const RunOptions& options) {
  if (options.host.missingDisplay.empty() || isatty(STDERR_FILENO) == 0) return;
  std::fprintf(stderr, "lumora: no window: %s; running headless\n",
               options.host.missingDisplay.c_str());
}

int runHost(const DeviceFolder& device, const RunOptions& options,
            const std::optional<ChosenGif>& gif, const std::function<void()>& launched) {
  storeScaling(options);
  return HostRun(device, options, gif, launched).run();
}

// Returns once the home screen has launched and, if there is a GIF, has its frames.
int runHostInBackground(const Context& context, const RunOptions& options,
                        const std::optional<ChosenGif>& gif) {
  const DeviceFolder device = context.device();
  const platform::backend::FileDescriptor log(
      openat(device.hostFolder(), "run.log",
             O_RDWR | O_CREAT | O_TRUNC | O_APPEND | O_NOFOLLOW | O_CLOEXEC, 0600));
  bool isParent = true;
  const int code = inBackground(log.get(), [&](const std::function<void()>& ready) {
    isParent = false;
    return runHost(device, options, std::nullopt, ready);
  });
  if (!isParent || code != ExitCode::Done || !gif) return code;
  const FrameCheck found = checkFrames(*gif);
  printDamage(found);
  importInOwnProcess(device,
                     {lumora::locationOf(lumora::ScreenLocation::Shared), *gif, found.shown,
                      TimeLimit(maxImportTime)},
                     WaitFor::Frames);
  return ExitCode::Done;
}

}  // namespace

void addRunCommand(CLI::App& lumora, Context& context) {
  auto options = std::make_shared<RunOptions>();
  CLI::App* command =
      lumora.add_subcommand("run", "show a GIF as the wallpaper until it is stopped");
  command->add_option("GIF", options->gif, "GIF file; without it, the wallpaper that was set last");
  acceptScaling(command->add_option("--scaling", options->scaling,
                                    "how the GIF fills the screen (default: FIT, on a desktop "
                                    "FILL)"));
  host::addHostOptions(*command, options->host);
  constexpr long maxRunTime = 100'000'000;
  command->add_option("--for", options->seconds, "time to run; then it stops")
      ->check(numberUpTo(maxRunTime))
      ->type_name("SECONDS");
  command->add_flag("--background", options->isInBackground, "return once the wallpaper is shown");
  command->callback([&context, options] {
    context.action = [&context, options] {
      std::optional<ChosenGif> gif;
      if (!options->gif.empty()) gif = readGif(options->gif);
      if (const auto& backdrop = options->host.desktop.backdrop.file; !backdrop.empty()) {
        readGif(backdrop);
      }
      warnOfNoDisplay(*options);
      if (options->isInBackground) return runHostInBackground(context, *options, gif);
      return runHost(context.device(), *options, gif, [] {});
    };
  });
}

}  // namespace tool
