#include "tool/device/host_process.h"

#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/linux/files/device_root.h"
#include "settings/notification_names.h"
#include "tool/device/frame_caches.h"
#include "tool/support/child_process.h"
#include "tool/support/own_program.h"

namespace tool {

using command_line::ExitCode;
using command_line::Failure;

namespace {

constexpr auto busLogName = "bus.log";

// A launch takes about a tenth of a second, unless the machine is very busy.
constexpr Seconds maxLaunchTime{30};

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

}  // namespace

AlreadyRunning::AlreadyRunning(const DeviceFolder& device)
    : Failure("a home screen is already running for " + device.path().string() +
              "; change its wallpaper with `lumora set`, or stop it with `lumora stop`") {}

void requireNoHost(const DeviceFolder& device) {
  if (HostConnection::find(device)) throw AlreadyRunning(device);
}

HostProcess::HostProcess(const DeviceFolder& device, const host::HostOptions& options,
                         const std::vector<std::string>& libraries)
    : device_(device),
      lock_(device, FileLock::host, true),
      moves_(movesOf(device)),
      launchLimit_(maxLaunchTime) {
  takeLock();
  hasUnfinishedCache_ = removeUnfinishedCaches();
  const platform::backend::FileDescriptor busLog(
      openat(device.hostFolder(), busLogName,
             O_WRONLY | O_CREAT | O_TRUNC | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0600));
  bus_ = std::make_unique<BusDaemon>(busLog.get());
  device.setBusAddress(bus_->address());
  start(options, libraries);
}

HostProcess::~HostProcess() {
  if (process_ > 0) endProgram(process_);
  device_.forgetBusAddress();
}

// Waits a moment for a home screen that is ending.
void HostProcess::takeLock() {
  constexpr Seconds patience{2};
  requireNoHost(device_);
  if (!lock_.take(patience)) throw AlreadyRunning(device_);
}

void HostProcess::start(const host::HostOptions& options,
                        const std::vector<std::string>& libraries) {
  std::vector<std::string> arguments{besideThisProgram("springboard"),
                                     "--root",
                                     device_.path(),
                                     "--bus",
                                     bus_->address(),
                                     "--quiet"};
  for (const std::string& library : libraries) {
    arguments.insert(arguments.end(), {"--library", library});
  }
  for (const std::string& argument : host::hostArguments(options)) arguments.push_back(argument);
  process_ = startProgram(arguments);
}

bool HostProcess::hasEnded() {
  if (process_ > 0 && waitpid(process_, &status_, WNOHANG) == process_) process_ = -1;
  return process_ < 0;
}

int HostProcess::exitCode() const {
  if (WIFSIGNALED(status_)) {
    throw Failure("the home screen was ended by signal " + std::to_string(WTERMSIG(status_)));
  }
  if (WEXITSTATUS(status_) == exitCodeOfMissingProgram) {
    const bool isThere = access(besideThisProgram("springboard").c_str(), X_OK) == 0;
    throw Failure(isThere ? "cannot start springboard; check the free memory"
                          : "cannot start springboard: it must be in the same folder as lumora");
  }
  return WEXITSTATUS(status_) == 0 ? ExitCode::Done : ExitCode::Failed;
}

std::unique_ptr<HostConnection> HostProcess::findLaunched() {
  auto host = HostConnection::find(device_);
  if (!host && launchLimit_.isOver()) {
    throw Failure(
        "the home screen has not launched; check the free memory and the limit of open files; see "
        "also " +
        (device_.path() / platform::backend::hostFolderName / busLogName).string());
  }
  // Launch starts only a wallpaper that has been installed before.
  if (host && hasUnfinishedCache_) host->post(lumora::control::updateAnimating);
  return host;
}

std::unique_ptr<HostConnection> HostProcess::awaitLaunch() {
  constexpr std::chrono::milliseconds pause{20};
  while (!hasEnded()) {
    if (auto host = findLaunched()) return host;
    std::this_thread::sleep_for(pause);
  }
  exitCode();
  throw Failure("the home screen has ended");
}

void HostProcess::checkFolder() {
  char changes[4096];
  while (read(moves_.get(), changes, sizeof changes) > 0) {
  }
  const bool isMoved =
      !isSameFile(device_.hostFolder(), device_.path() / platform::backend::hostFolderName);
  if (!isMoved && !lock_.isGone()) return;
  throw Failure("the device folder " + device_.path().string() +
                " has been moved or deleted; the home screen has been stopped");
}

}  // namespace tool
