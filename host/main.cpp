// springboard: a simulated home screen. It draws a still wallpaper with icons and loads the
// libraries that it is given, as the hooking loader does on the device. It does not depend on them.

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <CLI/CLI.hpp>
#include <dlfcn.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include "host/control/control_service.h"
#include "host/crash_report.h"
#include "host/displays/desktop_display.h"
#include "host/displays/window_display.h"
#include "host/home_screen/screen_drawing.h"
#include "host/home_screen/spring_board.h"
#include "host/options/host_options.h"
#include "platform/linux/bus/bus.h"
#include "platform/linux/files/device_root.h"
#include "platform/linux/files/signal_descriptor.h"
#include "platform/linux/freed_memory.h"
#include "platform/linux/main_loop/activity.h"
#include "platform/linux/main_loop/run_loop.h"
#include "platform/linux/out_of_memory.h"

namespace {

using platform::backend::RunLoop;

struct Arguments {
  host::HostOptions host;
  std::string root;
  std::string bus;
  std::vector<std::string> libraries;
  bool isQuiet = false;
};

constexpr int exitFailed = 1;
constexpr int exitWrongUse = 2;

// Why the run loop was stopped, if it was not asked to.
const char* failure = nullptr;

void failBecause(const char* reason) {
  failure = reason;
  RunLoop::main().stop();
}

void declareArguments(CLI::App& command, Arguments& arguments) {
  command.add_option("--root", arguments.root, "device folder")
      ->required()
      ->check(CLI::ExistingDirectory);
  command.add_option("--bus", arguments.bus, "address of the device's D-Bus daemon")->required();
  command.add_option("--library", arguments.libraries, "library to load into the process")
      ->allow_extra_args(false)
      ->check(CLI::ExistingFile);
  command.add_flag("--quiet", arguments.isQuiet, "do not say when the home screen is ready");
  command.set_version_flag("--version", "springboard " LUMORA_VERSION, "print the version");
  host::addHostOptions(command, arguments.host);
}

// A path without a slash would be looked for in the system's folders.
std::vector<std::string> absolutePaths(std::vector<std::string> paths) {
  for (std::string& path : paths) path = std::filesystem::absolute(path);
  return paths;
}

void loadLibraries(const std::vector<std::string>& libraries) {
  host::reportCrashes(libraries);
  for (const std::string& library : libraries) {
    if (dlopen(library.c_str(), RTLD_NOW | RTLD_LOCAL) == nullptr) {
      throw std::runtime_error(dlerror());
    }
  }
}

// Stops the run loop on SIGINT, SIGTERM and SIGHUP.
void stopOnSignals() {
  static const auto signals = platform::backend::signalDescriptor({SIGINT, SIGTERM, SIGHUP});
  const int descriptor = signals.get();
  RunLoop::main().addSource(descriptor, [descriptor] {
    signalfd_siginfo info{};
    if (read(descriptor, &info, sizeof info) <= 0) return false;
    RunLoop::main().stop();
    return true;
  });
}

void openBus(const std::string& address) {
  platform::backend::Bus::open(address, [] { failBecause("the D-Bus daemon has ended"); });
}

// Tells clients, and the user who has started the process, that they can begin.
void announce(host::ControlService& control, const Arguments& arguments) {
  control.announce();
  if (arguments.isQuiet) return;
  std::printf("home screen ready (%s, files in %s)\n", host::nameOf(arguments.host.display).c_str(),
              arguments.root.c_str());
  std::fflush(stdout);
}

// desktop is nullptr on other displays.
host::ControlService::DisplayActions actionsOf(host::DesktopDisplay* desktop,
                                               host::SpringBoard* springBoard) {
  if (desktop != nullptr) {
    return {[desktop] { return desktop->drawnOutput(); },
            [desktop](std::vector<std::string> names) {
              desktop->setExceptedOutputs(std::move(names));
            },
            [desktop](const host::BackdropOptions& backdrop) { desktop->setBackdrop(backdrop); }};
  }
  return {
      [springBoard] {
        return host::drawnScreen(springBoard->screen(),
                                 springBoard->options().scaleOfScreenshots());
      },
      nullptr,
      [springBoard](const host::BackdropOptions& backdrop) { springBoard->setBackdrop(backdrop); }};
}

void runHomeScreen(const Arguments& arguments) {
  platform::backend::setDeviceRoot(arguments.root);
  stopOnSignals();
  openBus(arguments.bus);
  host::HostOptions options = arguments.host;
  std::unique_ptr<host::DesktopDisplay> desktop;
  if (options.display == host::DisplayKind::Desktop) {
    desktop = std::make_unique<host::DesktopDisplay>(
        options.desktop, [] { failBecause("the Wayland compositor has ended"); });
    options.width = static_cast<int>(desktop->size().width);
    options.height = static_cast<int>(desktop->size().height);
    options.scale = 1;
  }
  // Never deleted, because blocks of the libraries may use them until the process ends.
  auto* springBoard = new host::SpringBoard(options);
  auto* control = new host::ControlService(*springBoard, actionsOf(desktop.get(), springBoard));
  loadLibraries(absolutePaths(arguments.libraries));
  std::unique_ptr<host::WindowDisplay> window;
  if (options.display == host::DisplayKind::Window) {
    window = std::make_unique<host::WindowDisplay>(*springBoard);
  }
  if (desktop) desktop->start(*springBoard);
  springBoard->launch();
  RunLoop::main().perform([control, &arguments] { announce(*control, arguments); });
  bool isVisibilityReported = false;
  while (!RunLoop::main().isStopped()) {
    try {
      RunLoop::main().turn(std::nullopt);
      control->runJobs();
    } catch (const std::bad_alloc& error) {
      host::abortIfFromLibrary(error);
      // The work that ran out of memory is dropped.
      platform::backend::noteOutOfMemory();
    }
    if (!isVisibilityReported && platform::backend::pendingBackgroundOperations() == 0) {
      if (desktop) desktop->noteLaunched();
      springBoard->reportVisibility();
      isVisibilityReported = true;
    }
  }
  if (failure != nullptr) throw std::runtime_error(failure);
}

int parseAndRun(int argc, char** argv) {
  CLI::App command("Simulates a phone's home screen. `lumora run` starts it.", "springboard");
  command.failure_message([](const CLI::App*, const CLI::Error& error) {
    return std::string("springboard: ") + error.what() + "\nFor usage, run: springboard --help\n";
  });
  Arguments arguments;
  declareArguments(command, arguments);
  try {
    command.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return command.exit(error) == 0 ? EXIT_SUCCESS : exitWrongUse;
  }
  runHomeScreen(arguments);
  return EXIT_SUCCESS;
}

}  // namespace

int main(int argc, char** argv) {
  platform::backend::keepFreedMemory();
  int code = exitFailed;
  try {
    code = parseAndRun(argc, argv);
  } catch (const std::exception& error) {
    host::abortIfFromLibrary(error);
    std::fprintf(stderr, "springboard: %s\n", error.what());
  }
  // Background work may still run and must not use destroyed statics, so skip their destructors.
  if (platform::backend::pendingBackgroundOperations() > 0) std::_Exit(code);
  return code;
}
