#include "tool/support/video_encoder.h"

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "command_line/failure.h"
#include "platform/linux/files/file_descriptor.h"
#include "tool/support/child_process.h"

namespace tool {

using command_line::Failure;

namespace {

namespace fs = std::filesystem;
using Words = std::vector<std::string>;

constexpr auto program = "ffmpeg";

bool isOnPath() {
  const char* path = std::getenv("PATH");
  std::istringstream folders(path == nullptr ? "" : path);
  for (std::string folder; std::getline(folders, folder, ':');) {
    const std::string file = (folder.empty() ? "." : folder) + "/" + program;
    if (access(file.c_str(), X_OK) == 0) return true;
  }
  return false;
}

// One run of ffmpeg in a folder.
class Encoder {
 public:
  Encoder(fs::path folder, const std::function<void(int)>& show,
          const std::function<bool()>& isInterrupted)
      : folder_(std::move(folder)), show_(show), isInterrupted_(isInterrupted) {}

  void run(const Words& arguments) const {
    Words words{program,     "-nostdin", "-loglevel",     "error",
                "-progress", progress(), "-stats_period", "0.1"};
    words.insert(words.end(), arguments.begin(), arguments.end());
    const platform::backend::FileDescriptor log(
        open(errors().c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600));
    const pid_t process = startProgram(words, log.get());
    const int status = await(process);
    if (status != 0) throw Failure("cannot make the video: " + reason(status));
  }

 private:
  std::string progress() const { return folder_ / "progress"; }
  std::string errors() const { return folder_ / "errors"; }

  int await(pid_t process) const {
    constexpr std::chrono::milliseconds pause{20};
    int status = 0;
    while (waitpid(process, &status, WNOHANG) == 0) {
      if (isInterrupted_()) {
        endProgram(process);
        throw Failure("interrupted; nothing has been written");
      }
      show_(framesDone());
      std::this_thread::sleep_for(pause);
    }
    return status;
  }

  // Returns the last number in lines such as "frame=34".
  int framesDone() const {
    int done = 0;
    std::ifstream file(progress());
    for (std::string line; std::getline(file, line);) {
      std::sscanf(line.c_str(), "frame=%d", &done);
    }
    return done;
  }

  // The first line is the most telling: the others follow from it.
  std::string reason(int status) const {
    std::string line;
    std::ifstream file(errors());
    std::getline(file, line);
    if (!line.empty()) return std::string(program) + " says: " + line;
    if (WIFSIGNALED(status)) {
      return std::string(program) + " was ended by signal " + std::to_string(WTERMSIG(status));
    }
    return std::string(program) + " ended with exit code " + std::to_string(WEXITSTATUS(status));
  }

  const fs::path folder_;
  const std::function<void(int)>& show_;
  const std::function<bool()>& isInterrupted_;
};

Words inputOf(const Recording& recording) {
  return {"-safe", "0", "-f", "concat", "-i", recording.list()};
}

// Keeps times as they are, and leaves out versions and dates. unit: the length of a tick.
Words outputTo(const fs::path& file, const char* unit) {
  return {"-fps_mode", "passthrough", "-enc_time_base", unit, "-fflags", "+bitexact",
          "-flags:v",  "+bitexact",   "-map_metadata",  "-1", "-y",      file};
}

Words joined(std::initializer_list<Words> parts) {
  Words all;
  for (const Words& part : parts) all.insert(all.end(), part.begin(), part.end());
  return all;
}

fs::path encodeGif(const Recording& recording, const Encoder& encoder, const fs::path& folder) {
  const fs::path palette = folder / "palette.png";
  fs::path file = folder / "recording.gif";
  constexpr std::chrono::milliseconds centisecond{10};
  encoder.run(joined({inputOf(recording), {"-vf", "palettegen", "-y", palette}}));
  encoder.run(joined({inputOf(recording),
                      {"-i", palette, "-filter_complex", "paletteuse=diff_mode=rectangle",
                       "-final_delay", std::to_string(recording.lengthOfLast() / centisecond)},
                      outputTo(file, "1:100")}));
  return file;
}

fs::path encodeWebM(const Recording& recording, const Encoder& encoder, const fs::path& folder) {
  fs::path file = folder / "recording.webm";
  const std::string length = std::to_string(recording.lengthOfLast().count());
  encoder.run(
      joined({inputOf(recording),
              // The colors of high-definition video, which players assume.
              {"-vf", "scale=out_color_matrix=bt709:out_range=tv,format=yuv420p", "-colorspace",
               "bt709", "-color_primaries", "bt709", "-color_trc", "bt709", "-color_range", "tv"},
              {"-c:v", "libvpx-vp9", "-crf", "24", "-b:v", "0", "-deadline", "good", "-cpu-used",
               "4", "-row-mt", "1"},
              // Otherwise the video would end where the last picture begins.
              {"-bsf:v", "setts=duration=" + length},
              outputTo(file, "1:1000")}));
  return file;
}

}  // namespace

void requireEncoder() {
  if (isOnPath()) return;
  throw Failure(
      "GIF and WebM are made with ffmpeg, which is not installed; install the package ffmpeg, or "
      "record PNG files to a folder: end its name in /");
}

fs::path encode(const Recording& recording, VideoFormat format, const fs::path& folder,
                const std::function<void(int done)>& show,
                const std::function<bool()>& isInterrupted) {
  const Encoder encoder(folder, show, isInterrupted);
  return format == VideoFormat::Gif ? encodeGif(recording, encoder, folder)
                                    : encodeWebM(recording, encoder, folder);
}

}  // namespace tool
