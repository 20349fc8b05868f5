#include "tool/program.h"

#include <map>
#include <string>
#include <vector>

namespace tool {
namespace {

std::vector<std::string> examplesOf(const std::string& name) {
  static const std::map<std::string, std::vector<std::string>> examples{
      {"",
       {"lumora run cat.gif --display desktop   # on every output, until Ctrl-C",
        "lumora set rain.gif                    # another GIF, from another terminal",
        "lumora scaling shared contain          # show all of it",
        "lumora toggle                          # pause it, or let it play again",
        "lumora autostart on                    # show it at every login",
        "lumora status                          # what plays, and why not"}},
      {"run",
       {"lumora run cat.gif --display desktop --background   # until `lumora stop`",
        "lumora run cat.gif --display desktop --scaling contain --backdrop '#203040'",
        "lumora run cat.gif --display desktop --on-battery pause",
        "lumora run cat.gif --idiom pad --locked             # in a window, on a tablet",
        "lumora run --library my-extension.so                # your extension, not Lumora's"}},
      {"set",
       {"lumora set rain.gif", "lumora set lockscreen rain.gif --keep-other",
        "lumora set rain.gif --output HDMI-1    # only there",
        "lumora set - < rain.gif                # from a pipe"}},
      {"remove",
       {"lumora remove lockscreen",
        "lumora remove --output HDMI-1          # it shows the wallpaper of the others again"}},
      {"forget", {"lumora forget"}},
      {"autostart", {"lumora autostart on", "lumora autostart status"}},
      {"scaling",
       {"lumora scaling shared contain          # with bars beside it",
        "lumora scaling lockscreen FILL         # without bars, cut off at the edges"}},
      {"speed", {"lumora speed shared 0.5                # at half the speed"}},
      {"alpha", {"lumora alpha homescreen 0.8"}},
      {"blur",
       {"lumora blur homescreen 6", "lumora blur homescreen 0               # sharp again"}},
      {"backdrop", {"lumora backdrop '#203040'", "lumora backdrop blur"}},
      {"outputs", {"lumora outputs", "lumora outputs --json"}},
      {"mode", {"lumora mode separate"}},
      {"screenshot", {"lumora screenshot wallpaper.png"}},
      {"record",
       {"lumora record wallpaper.gif --seconds 1",
        "lumora record frames/ --seconds 0.2    # PNG files, and a list for ffmpeg"}},
      {"put", {"lumora put DOCK_HEIGHT 96"}},
      {"get", {"lumora get SHARED_SCALING_MODE"}},
      {"play", {"lumora play my-script.txt", "lumora play - < my-script.txt"}},
      {"frames",
       {"lumora frames cat.gif cat-frames       # one PNG per frame, and the delays",
        "lumora frames --raw cat.gif > cat.rgba"}},
      {"advance", {"lumora advance 0.1"}},
      {"views", {"lumora views"}},
      {"trace", {"lumora trace --once                    # the hooks since the start"}},
      {"help", {"lumora help set"}},
  };
  const auto found = examples.find(name);
  return found == examples.end() ? std::vector<std::string>() : found->second;
}

}  // namespace

const command_line::Program& theProgram() {
  static const command_line::Program program{
      .name = "lumora",
      .purpose = "Plays an animated GIF as the wallpaper of a desktop or of a simulated phone.",
      .version = "lumora " LUMORA_VERSION,
      .more = "More: lumora COMMAND --help, man lumora",
      // What a newcomer needs comes first.
      .groups =
          {
              {"Wallpaper", {"run", "set", "remove", "status", "stop", "forget", "help"}},
              {"Look", {"scaling", "speed", "alpha", "blur"}},
              {"Desktop", {"pause", "resume", "toggle", "backdrop", "outputs", "autostart"}},
              {"Simulated phone",
               {"mode", "dock", "lock", "unlock", "home", "app", "screen", "rotate", "screenshot",
                "record"}},
              {"Settings", {"settings", "get", "put", "enable", "disable"}},
              {"For developers",
               {"wait", "play", "advance", "views", "trace", "watch", "post", "frames", "bus"}},
          },
      .examplesOf = examplesOf,
  };
  return program;
}

}  // namespace tool
