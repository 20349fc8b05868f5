#include "tool/commands/record_command.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include <fcntl.h>
#include <nlohmann/json.hpp>

#include "command_line/count.h"
#include "command_line/failure.h"
#include "command_line/progress_bar.h"
#include "host/control/status_keys.h"
#include "tool/device/host_connection.h"
#include "tool/support/interruption.h"
#include "tool/support/recording.h"
#include "tool/support/scratch_folder.h"
#include "tool/support/user_file.h"
#include "tool/support/video_encoder.h"

namespace tool {

using command_line::countOfFrames;
using command_line::Failure;
using command_line::ProgressBar;

namespace {

namespace fs = std::filesystem;
using std::chrono::nanoseconds;
using std::chrono::steady_clock;

struct RecordOptions {
  std::string path;
  double seconds = 5;
  // Pictures per second; 0: the usual number.
  double rate = 0;
};

// Nothing stands for a folder of PNG files.
using Format = std::optional<VideoFormat>;

// Viewers show a picture of a GIF that is to last less than 1/50 s for longer.
constexpr double maxGifRate = 50;

Format formatOf(const std::string& path) {
  if (path.ends_with('/')) return std::nullopt;
  const std::string ending = CLI::detail::to_lower(fs::path(path).extension());
  if (ending == ".gif") return VideoFormat::Gif;
  if (ending == ".webm") return VideoFormat::WebM;
  throw Failure("cannot record to " + path +
                ": end its name in .gif or .webm, or in / for a folder of PNG files");
}

// Returns the path without the slash at its end.
fs::path newFolder(const std::string& name) {
  fs::path folder = fs::absolute(name).parent_path();
  std::error_code error;
  if (!fs::exists(folder, error)) return folder;
  if (!fs::is_directory(folder, error)) throw Failure("cannot use " + name + ": Not a directory");
  if (!fs::is_empty(folder, error)) throw Failure(name + " is not empty; name a new folder");
  return folder;
}

struct Plan {
  bool isClockManual = false;
  double rate = 0;
  nanoseconds length{0};

  nanoseconds timeOf(std::int64_t index) const {
    const Seconds time(static_cast<double>(index) / rate);
    return std::min(length, std::chrono::round<nanoseconds>(time));
  }
  // Returns when the picture with this index is taken if the last one was taken now.
  nanoseconds timeAfter(nanoseconds now, std::int64_t index) const {
    return isClockManual ? timeOf(index) : std::min(length, now + timeOf(1));
  }
  int pictures() const { return static_cast<int>(std::ceil(Seconds(length).count() * rate)); }
};

Plan planFor(HostConnection& host, const RecordOptions& options, const Format& format) {
  const auto status = nlohmann::json::parse(host.status());
  const bool isGif = format == VideoFormat::Gif;
  const double refreshes = status.at(host::status::refreshRate);
  const double usual = isGif ? std::min(refreshes, maxGifRate) : refreshes;
  return {status.at(host::status::isClockManual), options.rate > 0 ? options.rate : usual,
          std::chrono::round<nanoseconds>(Seconds(options.seconds))};
}

// The clock of the screen, from the start of a recording.
class ScreenClock {
 public:
  ScreenClock(HostConnection& host, bool isManual) : host_(host), isManual_(isManual) {
    // The first picture, too, must not show unfinished work.
    if (isManual) host.advance(nanoseconds(0), usualTimeout);
  }

  nanoseconds now() const { return isManual_ ? advanced_ : steady_clock::now() - start_; }

  // Advances a manual clock, or waits for another one. Returns true if a signal has come.
  bool moveTo(nanoseconds time, Interruption& interruption) {
    if (!isManual_) return interruption.comesUntil(start_ + time);
    host_.advance(time - advanced_, usualTimeout);
    advanced_ = time;
    return interruption.hasCome();
  }

 private:
  HostConnection& host_;
  const bool isManual_;
  const steady_clock::time_point start_ = steady_clock::now();
  nanoseconds advanced_{0};
};

void takePictures(HostConnection& host, const Plan& plan, Recording& recording,
                  Interruption& interruption) {
  const ProgressBar bar("recording", plan.pictures());
  ScreenClock clock(host, plan.isClockManual);
  nanoseconds end{0};
  bool isInterrupted = false;
  for (std::int64_t index = 1; end < plan.length && !isInterrupted; ++index) {
    const nanoseconds now = std::min(clock.now(), plan.length);
    end = plan.timeAfter(now, index);
    recording.add(host.pixels(), now, end);
    bar.show(static_cast<int>(Seconds(now).count() * plan.rate) + 1);
    isInterrupted = clock.moveTo(end, interruption);
  }
}

// Returns why the recording has ended early, if there are pictures to keep nevertheless.
std::optional<Failure> problemOfTaking(HostConnection& host, const Plan& plan, Recording& recording,
                                       Interruption& interruption) {
  try {
    takePictures(host, plan, recording, interruption);
    return std::nullopt;
  } catch (const Failure& failure) {
    if (recording.count() == 0) throw;
    return failure;
  }
}

void writeVideo(Recording& recording, VideoFormat format, const ScratchFolder& scratch,
                Interruption& interruption, const std::string& path) {
  const ProgressBar bar("encoding", recording.count());
  const fs::path made = encode(
      recording, format, scratch.path(), [&bar](int done) { bar.show(done); },
      [&interruption] { return interruption.hasCome(); });
  const platform::backend::FileDescriptor file(open(made.c_str(), O_RDONLY | O_CLOEXEC));
  writeUserFile(path, file);
}

void record(const DeviceFolder& device, const RecordOptions& options) {
  const Format format = formatOf(options.path);
  if (format == VideoFormat::Gif && options.rate > maxGifRate) {
    throw Failure("a GIF shows 50 pictures per second at most; lower --fps, or record a WebM");
  }
  if (format) {
    checkUserFileIsWritable(options.path);
    requireEncoder();
  }
  const fs::path target = format ? fs::absolute(options.path) : newFolder(options.path);
  const auto host = HostConnection::require(device);
  const Plan plan = planFor(*host, options, format);
  Interruption interruption;
  ScratchFolder scratch(target.parent_path());
  Recording recording(scratch.path());
  const auto problem = problemOfTaking(*host, plan, recording, interruption);
  constexpr std::chrono::milliseconds centisecond{10};
  recording.writeList(format == VideoFormat::Gif ? centisecond : centisecond / 10);
  if (format) {
    writeVideo(recording, *format, scratch, interruption, options.path);
  } else {
    scratch.keepAs(target);
  }
  std::printf("%s in %s, %g s\n", countOfFrames(recording.count()).c_str(), options.path.c_str(),
              Seconds(recording.length()).count());
  if (problem) throw Failure(*problem);
}

CLI::Validator positiveUpTo(long max) {
  return CLI::Validator(
      [check = numberUpTo(max), max](const std::string& text) {
        std::string number = text;
        const bool fits = check(number).empty() && std::stod(text) > 0;
        return fits ? std::string()
                    : "must be a number above 0, up to " + std::to_string(max) + ", not " + text;
      },
      "");
}

}  // namespace

void addRecordCommand(CLI::App& lumora, Context& context) {
  auto options = std::make_shared<RecordOptions>();
  auto* command = addCommand(lumora, context, "record",
                             "make a GIF or a video of the screen; advances a manual clock",
                             [&context, options] { record(context.device(), *options); });
  command
      ->add_option(
          "FILE", options->path,
          "file to write, which ends in .gif or .webm and needs ffmpeg; or a new folder for "
          "PNG files, whose name ends in /")
      ->required();
  constexpr long maxTime = 3600;
  command->add_option("--seconds", options->seconds, "time to record; Ctrl-C ends it earlier")
      ->check(positiveUpTo(maxTime))
      ->type_name("SECONDS")
      ->capture_default_str();
  constexpr long maxRate = 240;
  command
      ->add_option(
          "--fps", options->rate,
          "pictures per second, fewer while nothing changes (default: those of the display, "
          "in a GIF at most 50)")
      ->check(positiveUpTo(maxRate))
      ->type_name("NUMBER");
}

}  // namespace tool
