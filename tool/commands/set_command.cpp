#include "tool/commands/set_command.h"

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>
#include <thread>
#include <utility>

#include <fcntl.h>
#include <nlohmann/json.hpp>
#include <sys/stat.h>

#include "command_line/count.h"
#include "command_line/failure.h"
#include "host/control/status_keys.h"
#include "host/options/host_options.h"
#include "platform/data.h"
#include "preferences/commands/gif_arguments.h"
#include "preferences/separation.h"
#include "settings/locations.h"
#include "tool/device/device_folder.h"
#include "tool/device/extension_libraries.h"
#include "tool/device/host_connection.h"
#include "tool/device/host_process.h"
#include "tool/device/import_process.h"
#include "tool/device/output_devices.h"
#include "tool/device/output_report.h"
#include "tool/support/gif_file.h"
#include "tool/support/time_limit.h"

namespace tool {

using command_line::countOfFrames;
using command_line::Failure;
using command_line::ProgressStyle;

namespace {

struct SetOptions {
  // Or the GIF, if path is empty.
  std::string location;
  std::string path;
  // The output that gets the wallpaper for itself, or "".
  std::string output;
  double timeout = usualTimeout.count();
  bool keepsOther = false;
  bool noWait = false;
  ProgressStyle progress = ProgressStyle::Bar;
};

// Returns a home screen that makes the frames if none is running, otherwise nullptr.
std::unique_ptr<HostProcess> hostForImport(const DeviceFolder& device,
                                           const lumora::Location& location, Seconds timeout) {
  if (const auto running = HostConnection::find(device, timeout)) {
    if (location.mode == lumora::WallpaperMode::Separate) running->requirePhone();
    return nullptr;
  }
  host::HostOptions headless;
  headless.display = host::DisplayKind::Headless;
  auto host = std::make_unique<HostProcess>(device, headless, librariesFor({}));
  host->awaitLaunch();
  return host;
}

void importAt(const DeviceFolder& device, const lumora::Location& location, const ChosenGif& gif,
              const SetOptions& options) {
  const FrameCheck found = checkFrames(gif);
  printDamage(found);
  const auto host = hostForImport(device, location, Seconds(options.timeout));
  const bool isPrepared = isPreparedFolder(device.path());
  const bool noWait = options.noWait && !host;
  // A home screen for this import makes frames only as long as this process waits.
  const TimeLimit limit(host ? maxImportTime : Seconds(options.timeout));
  importInOwnProcess(device, {location, gif, found.shown, limit, !isPrepared},
                     noWait ? WaitFor::Handover : WaitFor::Frames, options.progress);
  if (noWait) return;
  const std::string place =
      options.output.empty() ? preferences::placeName(location) : options.output;
  std::printf("%s wallpaper set: %s%s\n", place.c_str(), countOfFrames(found.shown).c_str(),
              host && options.output.empty() ? "; `lumora run` shows it" : "");
}

// Returns the GIF of the shared wallpaper. Throws Failure if it cannot be read.
ChosenGif sharedGif() {
  auto data = platform::NSData::dataWithContentsOfFile(
      lumora::locationOf(lumora::ScreenLocation::Shared).gifPath);
  if (!data) throw Failure("cannot read the shared wallpaper");
  return checkGif("the shared wallpaper", std::move(data));
}

void set(const DeviceFolder& device, const ChosenGif& gif, const SetOptions& options) {
  const lumora::Location& location = locationNamed(options.location);
  const lumora::Location* other = preferences::otherLocationThatLoses(location);
  if (other != nullptr && options.keepsOther) importAt(device, *other, sharedGif(), options);
  importAt(device, location, gif, options);
  if (other != nullptr && !options.keepsOther) preferences::printLossOf(*other);
}

// Returns the output of a running home screen. Throws Failure if there is no such output.
nlohmann::ordered_json outputNamed(const std::string& name, HostConnection& host) {
  const auto report = nlohmann::ordered_json::parse(host.status());
  if (report.value(host::status::display, "") != host::status::displayDesktop) {
    throw Failure("the home screen is not on a desktop");
  }
  for (const auto& output : report.at(host::status::outputs)) {
    if (output.value(host::status::output::name, "") == name) return output;
  }
  throw Failure(problemWithOutput(report.at(host::status::outputs), name));
}

// Waits until the desktop has left the output to its own wallpaper.
void awaitOutput(HostConnection& host, const std::string& name, const TimeLimit& limit) {
  constexpr std::chrono::milliseconds pause{20};
  while (outputNamed(name, host).value(host::status::output::isChosen, false)) {
    if (limit.isOver()) {
      throw Failure("the wallpaper of " + name + " is stored, but not shown before the timeout");
    }
    std::this_thread::sleep_for(pause);
  }
}

// Makes the frames in a folder that is not in use before the output gets it, so that the picture on
// the output changes at once.
void setNew(const DeviceFolder& desktop, const ChosenGif& gif, const SetOptions& options) {
  const auto prepared = preparedFolderOfOutput(desktop, options.output);
  std::error_code error;
  std::filesystem::remove_all(prepared, error);
  try {
    set(DeviceFolder(prepared, IfMissing::Make), gif, options);
  } catch (const Failure&) {
    std::filesystem::remove_all(prepared, error);
    throw;
  }
  std::filesystem::rename(prepared, folderOfOutput(desktop, options.output), error);
  if (error) {
    throw Failure("cannot store the wallpaper of " + options.output + ": " + error.message());
  }
}

void setOfOutput(const DeviceFolder& desktop, const ChosenGif& gif, const SetOptions& options) {
  const std::string& output = options.output;
  const auto host = HostConnection::find(desktop, Seconds(options.timeout));
  const bool isWanted =
      host && outputNamed(output, *host).value(host::status::output::isWanted, true);
  const auto lock = lockOutputs(desktop);
  const auto folder = folderOfOutput(desktop, output);
  const bool isNew = !std::filesystem::exists(folder);
  if (isNew) {
    setNew(desktop, gif, options);
  } else {
    set(DeviceFolder(folder, IfMissing::Make), gif, options);
  }
  if (!host) {
    std::printf("`lumora run --display desktop` shows it on %s\n", output.c_str());
  } else if (!isWanted) {
    std::printf("`lumora run` has not chosen %s, so it will be shown by a later run\n",
                output.c_str());
  } else {
    // A touched folder makes `lumora run` start a home screen that has ended.
    utimensat(AT_FDCWD, folder.c_str(), nullptr, 0);
    awaitOutput(*host, output, TimeLimit(Seconds(options.timeout)));
  }
}

}  // namespace

void addSetCommand(CLI::App& lumora, Context& context) {
  auto options = std::make_shared<SetOptions>();
  auto* command =
      addCommand(lumora, context, "set", "choose the GIF of a wallpaper", [&context, options] {
        const ChosenGif gif = readGif(options->path);
        const auto work = options->output.empty() ? set : setOfOutput;
        work(context.madeDevice(), gif, *options);
      });
  preferences::addLocationAndGif(command, options->location, options->path);
  command->add_flag("--keep-other", options->keepsOther,
                    "keep a shared wallpaper on the other screen");
  command->add_flag("--no-wait", options->noWait, "return without waiting for the frames");
  addTimeout(command, options->timeout);
  addProgress(command, options->progress);
  addOutput(command, options->output)
      ->description("give the output with this name its own wallpaper");
}

}  // namespace tool
