// springboard: a home screen for Linux. It draws a still wallpaper and what stands before it, loads
// the libraries it is told to, as the hooking loader does on the device, and knows nothing of them.

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>
#include <dlfcn.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include "host/control/control_service.h"
#include "host/displays/desktop_display.h"
#include "host/displays/window_display.h"
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
};

constexpr int exitFailed = 1;
constexpr int exitWrongUse = 2;

bool busWasLost = false;

void declareArguments(CLI::App& command, Arguments& arguments) {
  command.add_option("--root", arguments.root, "folder that holds the device's files")
      ->required()
      ->check(CLI::ExistingDirectory);
  command.add_option("--bus", arguments.bus, "address of the device's message bus")->required();
  command.add_option("--library", arguments.libraries, "library to load into the home screen")
      ->check(CLI::ExistingFile);
  host::addHostOptions(command, arguments.host);
}

void loadLibraries(const std::vector<std::string>& libraries) {
  for (const std::string& library : libraries) {
    if (dlopen(library.c_str(), RTLD_NOW | RTLD_LOCAL) == nullptr) {
      throw std::runtime_error(dlerror());
    }
  }
}

// Ends the run loop on the signals by which people and programs end processes.
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
  platform::backend::Bus::open(address, [] {
    busWasLost = true;
    RunLoop::main().stop();
  });
}

void runHomeScreen(const Arguments& arguments) {
  platform::backend::setDeviceRoot(arguments.root);
  stopOnSignals();
  openBus(arguments.bus);
  // They live until the process ends: blocks of the libraries may speak to them until then.
  auto* springBoard = new host::SpringBoard(arguments.host);
  auto* control = new host::ControlService(*springBoard);
  loadLibraries(arguments.libraries);
  std::unique_ptr<host::WindowDisplay> window;
  std::unique_ptr<host::DesktopDisplay> desktop;
  if (arguments.host.display == host::DisplayKind::Window) {
    window = std::make_unique<host::WindowDisplay>(*springBoard);
  } else if (arguments.host.display == host::DisplayKind::Desktop) {
    desktop = std::make_unique<host::DesktopDisplay>(*springBoard);
  }
  springBoard->launch();
  RunLoop::main().perform([control] { control->announce(); });
  bool isVisibilityReported = false;
  while (!RunLoop::main().isStopped()) {
    try {
      RunLoop::main().turn(std::nullopt);
      control->runJobs();
    } catch (const std::bad_alloc&) {
      // What could not be done for want of memory is left undone.
      platform::backend::noteOutOfMemory();
    }
    if (!isVisibilityReported && platform::backend::pendingBackgroundOperations() == 0) {
      springBoard->reportVisibility();
      isVisibilityReported = true;
    }
  }
  if (busWasLost) throw std::runtime_error("the message bus has gone away");
}

int parseAndRun(int argc, char** argv) {
  CLI::App command("A home screen for Linux. Usually started by `lumora run`.", "springboard");
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
    std::fprintf(stderr, "springboard: %s\n", error.what());
  }
  // Work that still runs in the background is not waited for; it must not meet a process half gone.
  if (platform::backend::pendingBackgroundOperations() > 0) std::_Exit(code);
  return code;
}
