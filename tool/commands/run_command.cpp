#include "tool/commands/run_command.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <optional>
#include <thread>
#include <utility>

#include <fcntl.h>
#include <nlohmann/json.hpp>
#include <poll.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include "command_line/failure.h"
#include "command_line/progress_bar.h"
#include "command_line/terminal.h"
#include "host/control/control_names.h"
#include "host/control/status_keys.h"
#include "host/options/host_options.h"
#include "platform/linux/files/signal_descriptor.h"
#include "preferences/changes.h"
#include "preferences/commands/scaling_choice.h"
#include "preferences/stored_settings.h"
#include "tool/commands/output_hosts.h"
#include "tool/device/extension_libraries.h"
#include "tool/device/host_connection.h"
#include "tool/device/host_process.h"
#include "tool/device/import_process.h"
#include "tool/device/last_desktop.h"
#include "tool/device/output_report.h"
#include "tool/device/wallpaper_import.h"
#include "tool/device/wallpaper_names.h"
#include "tool/support/background.h"
#include "tool/support/child_process.h"

namespace tool {

using command_line::ExitCode;
using command_line::Failure;
using command_line::printable;
using command_line::ProgressBar;

namespace {

using std::chrono::steady_clock;

struct RunOptions {
  std::string gif;
  // "" if none is given.
  std::string scaling;
  std::optional<double> seconds;
  bool isInBackground = false;
  // True if it takes the options of the last run on a desktop.
  bool isRestoring = false;
  // True if it runs for one output of a desktop whose own run started it.
  bool isForOneOutput = false;
  // As the user gives them; see librariesFor.
  std::vector<std::string> libraries;
  host::HostOptions host;
};

int runHost(const DeviceFolder& device, const RunOptions& options,
            const std::optional<ChosenGif>& gif, const std::function<void()>& launched);

// Remembers that the device has had a window.
constexpr auto windowNote = "window";

// The home screen from its start to its end. The arguments must outlive the object.
class HostRun {
 public:
  // Starts the home screen. Calls launched once it has launched and the greeting is printed.
  HostRun(const DeviceFolder& device, const RunOptions& options,
          const std::optional<ChosenGif>& gif, const std::function<void()>& launched)
      : device_(device),
        options_(options),
        gif_(gif),
        launched_(launched),
        signals_(platform::backend::signalDescriptor({SIGINT, SIGTERM, SIGHUP, SIGCHLD})) {
    const bool isDesktop = options.host.display == host::DisplayKind::Desktop;
    const bool hasOutputs = isDesktop && !options.isForOneOutput;
    if (hasOutputs) ownWallpapers_ = chosenOwnWallpapers();
    host::HostOptions host = options.host;
    host.desktop.exceptedOutputs = exceptedOutputs();
    if (!host.showsKeys) host.showsKeys = isFirstWindow();
    process_.emplace(device, host, librariesFor(options.libraries));
    if (hasOutputs) startOutputs();
  }

  ~HostRun() {
    if (import_ > 0) endProgram(import_);
  }
  HostRun(const HostRun&) = delete;
  HostRun& operator=(const HostRun&) = delete;

  int run() {
    while (!process_->hasEnded()) {
      if (!isLaunched_) greetOnceLaunched();
      if (isLaunched_ && outputs_) followOutputs();
      if (isTimeUp() || waitForSignal()) return ExitCode::Done;
    }
    return process_->exitCode();
  }

 private:
  // A home screen that crashes meanwhile does not answer; then how it has ended tells more.
  void greetOnceLaunched() {
    try {
      tryToGreet();
    } catch (const Failure&) {
      constexpr Seconds patience{2};
      constexpr std::chrono::milliseconds pause{10};
      const TimeLimit limit(patience);
      while (!process_->hasEnded() && !limit.isOver()) std::this_thread::sleep_for(pause);
      if (!process_->hasEnded()) throw;
    }
  }

  void tryToGreet() {
    const auto host = process_->findLaunched();
    if (!host) return;
    isLaunched_ = true;
    if (options_.seconds) end_ = TimeLimit(Seconds(*options_.seconds)).end();
    if (!options_.isForOneOutput) greet(*host);
    launched_();
    if (gif_) import_ = startProcess([this] { return import(); });
  }

  void greet(HostConnection& host) const {
    const auto report = nlohmann::ordered_json::parse(host.status());
    for (const std::string& wanted : options_.host.desktop.outputs) {
      const std::string problem = problemWithOutput(report.at(host::status::outputs), wanted);
      if (problem.empty()) continue;
      std::fprintf(stderr, "lumora: %s\n", printable(problem, STDERR_FILENO).c_str());
    }
    std::printf("home screen running (%s, files in %s); %s`lumora stop` stops it\n",
                host::nameOf(options_.host.display).c_str(), device_.path().c_str(),
                options_.isInBackground ? "" : "Ctrl-C or ");
    if (options_.host.display == host::DisplayKind::Window) {
      std::printf("in the window, ? lists the keys\n");
      device_.setNote(windowNote, "opened\n");
      tellWallpaperName(host, device_);
    }
    std::fflush(stdout);
  }

  bool isFirstWindow() const {
    return options_.host.display == host::DisplayKind::Window && !device_.note(windowNote);
  }

  // Runs in a separate process, because importing a large GIF takes long.
  int import() const {
    return reportingFailure([this] {
      const TimeLimit limit(maxImportTime);
      const lumora::Location& shared = lumora::locationOf(lumora::ScreenLocation::Shared);
      const FrameCheck found = checkFrames(*gif_);
      printDamage(found);
      const ProgressBar bar("making frames", found.shown);
      importWallpaper(device_, {shared, *gif_, found.shown, limit},
                      [&bar](const ImportProgress& progress) { bar.show(progress.framesFound); });
      return ExitCode::Done;
    });
  }

  // Runs in a separate process the home screen of an output with a wallpaper of its own.
  int runOutput(const std::string& output, const std::function<void()>& launched) const {
    return reportingFailure([&] {
      RunOptions options = options_;
      options.isForOneOutput = true;
      options.scaling.clear();
      options.seconds.reset();
      options.host.desktop.outputs = {output};
      options.host.desktop.exceptedOutputs.clear();
      options.host.desktop.isSpanning = false;
      // It may have been changed since this run began.
      options.host.desktop.backdrop = lastDesktop(device_).desktop.backdrop;
      const DeviceFolder device(folderOfOutput(device_, output), IfMissing::Make);
      return runHost(device, options, std::nullopt, [&] {
        const auto host = HostConnection::require(device);
        host->settle();
        if (isPaused()) host->call(host::service::method::pause);
        awaitOutputs(*host);
        launched();
      });
    });
  }

  // Returns true if the wallpaper of the desktop has been paused by hand.
  bool isPaused() const {
    const auto desktop = HostConnection::find(device_);
    return desktop && nlohmann::json::parse(desktop->status()).value(host::status::paused, false);
  }

  // Waits a moment until the home screen shows its wallpaper on all outputs that it fills.
  static void awaitOutputs(HostConnection& host) {
    constexpr Seconds patience{2};
    constexpr std::chrono::milliseconds pause{10};
    const auto isDone = [](const nlohmann::json& output) {
      return output.value(host::status::output::isPainted, true) ||
             !output.value(host::status::output::isChosen, true);
    };
    for (const TimeLimit limit(patience); !limit.isOver(); std::this_thread::sleep_for(pause)) {
      const auto report = nlohmann::json::parse(host.status());
      if (std::ranges::all_of(report.at(host::status::outputs), isDone)) return;
    }
  }

  template <typename Work>
  static int reportingFailure(Work work) {
    try {
      return work();
    } catch (const std::exception& error) {
      std::fprintf(stderr, "lumora: %s\n", printable(error.what(), STDERR_FILENO).c_str());
      return ExitCode::Failed;
    }
  }

  // Returns the outputs with a wallpaper of their own among those that the user has chosen.
  std::vector<std::string> chosenOwnWallpapers() const {
    std::vector<std::string> names = outputsWithOwnWallpaper(device_);
    std::erase_if(
        names, [this](const std::string& name) { return !options_.host.desktop.isChosen(name); });
    return names;
  }

  void startOutputs() {
    outputs_.emplace(
        device_, [this] { return chosenOwnWallpapers(); },
        [this](const std::string& output, const auto& launched) {
          return runOutput(output, launched);
        });
  }

  // Returns the outputs that do not show the desktop's wallpaper: the user has excepted them, or
  // they show their own.
  std::vector<std::string> exceptedOutputs() const {
    std::vector<std::string> names = options_.host.desktop.exceptedOutputs;
    names.insert(names.end(), ownWallpapers_.begin(), ownWallpapers_.end());
    return names;
  }

  void followOutputs() {
    outputs_->update();
    if (std::exchange(ownWallpapers_, outputs_->shown()) != outputs_->shown()) exceptOutputs();
    outputs_->endRemoved();
  }

  void exceptOutputs() const {
    try {
      const auto host = HostConnection::require(device_);
      host->setExceptedOutputs(exceptedOutputs());
      awaitOutputs(*host);
    } catch (const Failure&) {
      // The home screen has ended, which the loop notices, or hangs.
    }
  }

  bool isTimeUp() const { return end_ && steady_clock::now() >= *end_; }

  // Sleeps until a signal, a change to the folders, or the next deadline. Returns true if the
  // signal asks this process to end.
  bool waitForSignal() {
    constexpr int launchPause = 20;
    constexpr int maxPause = 3600 * 1000;
    int pause = isLaunched_ ? maxPause : launchPause;
    if (end_) {
      const auto rest =
          std::chrono::ceil<std::chrono::milliseconds>(*end_ - steady_clock::now()).count();
      pause = static_cast<int>(std::clamp<std::int64_t>(rest, 0, pause));
    }
    std::vector<pollfd> waiting = {{signals_.get(), POLLIN, 0},
                                   {process_->folderChanges(), POLLIN, 0}};
    for (const int descriptor : outputs_ ? outputs_->descriptors() : std::vector<int>()) {
      waiting.push_back({descriptor, POLLIN, 0});
    }
    poll(waiting.data(), waiting.size(), pause);
    // The run of the desktop ends that of an output.
    if (!options_.isForOneOutput) process_->checkFolder();
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
  std::optional<HostProcess> process_;
  std::optional<OutputHosts> outputs_;
  // The outputs that show a wallpaper of their own.
  std::vector<std::string> ownWallpapers_;
  pid_t import_ = -1;
  bool isLaunched_ = false;
  std::optional<steady_clock::time_point> end_;
};

// Stores the scaling. The wallpaper of a desktop fills the screen unless something else is stored.
void storeScaling(const RunOptions& options) {
  const bool isDesktop = options.host.display == host::DisplayKind::Desktop;
  for (const lumora::Location& location : lumora::locations) {
    const auto change = preferences::changeOf(preferences::LiveSetting::Scaling, location,
                                              options.scaling.empty() ? "FILL" : options.scaling);
    const bool isDefault = isDesktop && !preferences::storedSetting(change.key);
    if (!options.scaling.empty() || isDefault) store(change);
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
  requireNoHost(device);
  storeScaling(options);
  const bool isDesktop = options.host.display == host::DisplayKind::Desktop;
  if (isDesktop && !options.isForOneOutput) storeLastDesktop(device, options.host);
  return HostRun(device, options, gif, launched).run();
}

// Waits until the home screen has found the frames of its wallpaper, unless it must make them anew.
void awaitWallpaper(const DeviceFolder& device) {
  const auto host = HostConnection::require(device);
  const TimeLimit limit(usualTimeout);
  while (!host->settle(limit.left()) && !limit.isOver()) {
  }
}

// Returns once the home screen shows its wallpaper or, if there is a GIF, has that one's frames.
int runHostInBackground(const Context& context, const RunOptions& options,
                        const std::optional<ChosenGif>& gif) {
  const DeviceFolder device = context.madeDevice();
  requireNoHost(device);
  const platform::backend::FileDescriptor log(
      openat(device.hostFolder(), "run.log",
             O_RDWR | O_CREAT | O_TRUNC | O_APPEND | O_NOFOLLOW | O_CLOEXEC, 0600));
  bool isParent = true;
  const int code = inBackground(log.get(), [&](const std::function<void()>& ready) {
    isParent = false;
    return runHost(device, options, std::nullopt, ready);
  });
  if (!isParent || code != ExitCode::Done) return code;
  if (!gif) {
    awaitWallpaper(device);
    return ExitCode::Done;
  }
  const FrameCheck found = checkFrames(*gif);
  printDamage(found);
  importInOwnProcess(device,
                     {lumora::locationOf(lumora::ScreenLocation::Shared), *gif, found.shown,
                      TimeLimit(maxImportTime)},
                     WaitFor::Frames);
  return ExitCode::Done;
}

// The next login must not fail because a picture is gone.
void useBlurIfMissing(host::BackdropOptions& backdrop) {
  if (backdrop.file.empty()) return;
  try {
    readGif(backdrop.file);
  } catch (const Failure& failure) {
    std::fprintf(stderr, "lumora: %s; using --backdrop blur\n",
                 printable(failure.what(), STDERR_FILENO).c_str());
    backdrop = {};
  }
}

// Loading no library leaves none that could show a GIF.
void checkLibraries(const RunOptions& options) {
  const bool hasNone = std::ranges::count(options.libraries, noLibraryWord) > 0;
  if (hasNone && options.libraries.size() > 1) {
    throw CLI::ValidationError("--library", "none excludes all others");
  }
  if (hasNone && !options.gif.empty()) {
    throw CLI::ValidationError("--library", "none leaves no library that shows the GIF");
  }
}

int start(const Context& context, const RunOptions& options) {
  librariesFor(options.libraries);
  std::optional<ChosenGif> gif;
  if (!options.gif.empty()) gif = readGif(options.gif);
  if (const auto& backdrop = options.host.desktop.backdrop.file; !backdrop.empty()) {
    readGif(backdrop);
  }
  warnOfNoDisplay(options);
  if (options.isInBackground) return runHostInBackground(context, options, gif);
  return runHost(context.madeDevice(), options, gif, [] {});
}

int restore(const Context& context, RunOptions options) {
  options.host = lastDesktop(context.madeDevice());
  useBlurIfMissing(options.host.desktop.backdrop);
  try {
    return start(context, options);
  } catch (const AlreadyRunning&) {
    return ExitCode::Done;
  }
}

}  // namespace

void addRunCommand(CLI::App& lumora, Context& context) {
  auto options = std::make_shared<RunOptions>();
  CLI::App* command =
      lumora.add_subcommand("run", "show a GIF as the wallpaper until it is stopped");
  command->add_option("GIF", options->gif, "GIF file; without it, the wallpaper that was set last");
  preferences::acceptScaling(
      command->add_option("--scaling", options->scaling,
                          "how the GIF fills the screen (default: FIT, on a desktop "
                          "FILL)"));
  host::addHostOptions(*command, options->host);
  constexpr long maxRunTime = 100'000'000;
  command->add_option("--for", options->seconds, "time to run; then it stops")
      ->check(numberUpTo(maxRunTime))
      ->type_name("SECONDS");
  command
      ->add_option("--library", options->libraries,
                   "extension to load in place of Lumora's own library, which is `lumora`; may be "
                   "given again; none: load nothing")
      ->allow_extra_args(false)
      ->type_name("FILE|lumora|none");
  command->add_flag("--background", options->isInBackground, "return once the wallpaper is shown");
  command
      ->add_flag("--restore", options->isRestoring,
                 "run on the desktop with the options of the last run there, unless it runs")
      ->excludes(command->get_option("--display"))
      ->excludes(command->get_option("--output"))
      ->excludes(command->get_option("--except"))
      ->excludes(command->get_option("--span"));
  command->callback([&context, options] {
    checkLibraries(*options);
    context.action = [&context, options] {
      return options->isRestoring ? restore(context, *options) : start(context, *options);
    };
  });
}

}  // namespace tool
