#include "tool/device/autostart.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <system_error>

#include <fcntl.h>
#include <sys/wait.h>

#include "command_line/failure.h"
#include "platform/linux/files/file_descriptor.h"
#include "tool/support/child_process.h"
#include "tool/support/user_directories.h"

namespace tool {

using command_line::Failure;

namespace {

namespace fs = std::filesystem;

// Returns true if systemd runs for the user.
bool hasUserManager() {
  const char* runtime = std::getenv("XDG_RUNTIME_DIR");
  std::error_code error;
  return runtime != nullptr && fs::exists(fs::path(runtime) / "systemd", error);
}

struct Files {
  fs::path configuration = userDirectory("XDG_CONFIG_HOME", ".config");
  fs::path unit = configuration / "systemd/user/lumora.service";
  // What `systemctl --user enable` makes.
  fs::path wanted = configuration / "systemd/user/graphical-session.target.wants/lumora.service";
  fs::path entry = configuration / "autostart/lumora.desktop";
};

// Returns the command for a unit or an entry. Both take words in double quotes.
std::string quoted(const std::vector<std::string>& command) {
  std::string line;
  for (const std::string& word : command) {
    if (word.find_first_of("\"\\$`%\n") != word.npos) {
      throw Failure("the path " + word + " cannot be part of an autostart file");
    }
    line += (line.empty() ? "\"" : " \"") + word + "\"";
  }
  return line;
}

void write(const fs::path& path, const std::string& text) {
  std::error_code error;
  fs::create_directories(path.parent_path(), error);
  std::ofstream file(path, std::ios::trunc);
  file << text << std::flush;
  if (!file) throw Failure("cannot write " + path.string() + ": " + std::strerror(errno));
}

// The user manager may go on running between two logins.
void letManagerRead() {
  const platform::backend::FileDescriptor nothing(open("/dev/null", O_WRONLY | O_CLOEXEC));
  const pid_t reload = startProgram({"systemctl", "--user", "daemon-reload"}, nothing.get());
  waitpid(reload, nullptr, 0);
}

void writeUnit(const Files& files, const std::string& command) {
  write(files.unit,
        "[Unit]\n"
        "Description=Animated wallpaper\n"
        "Documentation=man:lumora(1)\n"
        "PartOf=graphical-session.target\n"
        "After=graphical-session.target\n"
        "StartLimitIntervalSec=120\n"
        "StartLimitBurst=5\n"
        "\n"
        "[Service]\n"
        "ExecStart=" +
            command +
            "\n"
            "Restart=on-failure\n"
            "RestartSec=5\n"
            "\n"
            "[Install]\n"
            "WantedBy=graphical-session.target\n");
  std::error_code error;
  fs::create_directories(files.wanted.parent_path(), error);
  fs::remove(files.wanted, error);
  fs::create_symlink("../lumora.service", files.wanted, error);
  if (error) throw Failure("cannot make " + files.wanted.string() + ": " + error.message());
  letManagerRead();
}

void writeEntry(const Files& files, const std::string& command) {
  // systemd makes units of entries; with a unit of its own, the wallpaper does not need that.
  write(files.entry,
        "[Desktop Entry]\n"
        "Type=Application\n"
        "Name=Lumora\n"
        "Comment=Animated wallpaper\n"
        "Exec=" +
            command + "\nTerminal=false\n" + (hasUserManager() ? "X-systemd-skip=true\n" : ""));
}

}  // namespace

std::vector<fs::path> autostartFiles() {
  const Files files;
  std::vector<fs::path> found;
  std::error_code error;
  for (const fs::path& path : {files.unit, files.entry}) {
    if (fs::exists(path, error)) found.push_back(path);
  }
  return found;
}

std::vector<fs::path> writeAutostart(const std::vector<std::string>& command) {
  const Files files;
  const std::string line = quoted(command);
  if (hasUserManager()) writeUnit(files, line);
  writeEntry(files, line);
  return autostartFiles();
}

void removeAutostart() {
  const Files files;
  const bool hadUnit = fs::exists(files.unit);
  for (const fs::path& path : {files.wanted, files.unit, files.entry}) {
    std::error_code error;
    fs::remove(path, error);
    if (error) throw Failure("cannot delete " + path.string() + ": " + error.message());
  }
  if (hadUnit && hasUserManager()) letManagerRead();
}

}  // namespace tool
