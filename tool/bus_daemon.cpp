#include "tool/bus_daemon.h"

#include <cstdlib>
#include <filesystem>

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/linux/device_root.h"
#include "tool/bus_address.h"
#include "tool/child_process.h"
#include "tool/failure.h"
#include "tool/user_file.h"

namespace tool {
namespace {

namespace fs = std::filesystem;

constexpr auto directoryPrefix = "lumora-";

// The bus of one user's one device: no services to activate, and room for large screenshots.
std::string configuration(const std::string& socket) {
  return R"(<!DOCTYPE busconfig PUBLIC
 "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:path=)" +
         socket + R"(</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
  <limit name="max_message_size">134217728</limit>
</busconfig>
)";
}

// A socket's path must be short, which the device's folder may not be.
std::string makeShortDirectory() {
  constexpr std::size_t longestBase = 64;
  const char* runtime = std::getenv("XDG_RUNTIME_DIR");
  for (const std::string& base :
       {std::string(runtime == nullptr ? "" : runtime), std::string("/tmp")}) {
    if (base.empty() || base.size() > longestBase) continue;
    std::string name = base;
    name.append("/").append(directoryPrefix).append("XXXXXX");
    if (mkdtemp(name.data()) != nullptr) return name;
  }
  throw Failure("cannot make a folder for the message bus in /tmp: is there space?");
}

// Waits for the address that the daemon prints once it is ready; empty if it ends before.
std::string readAddress(int descriptor) {
  constexpr int limitMilliseconds = 10000;
  std::string address;
  char letter = 0;
  pollfd waiting{descriptor, POLLIN, 0};
  while (poll(&waiting, 1, limitMilliseconds) > 0 && read(descriptor, &letter, 1) == 1) {
    if (letter == '\n') return address;
    address += letter;
  }
  return "";
}

}  // namespace

BusDaemon::BusDaemon(const std::string& errorFile) : directory_(makeShortDirectory()) {
  try {
    start(errorFile);
  } catch (const Failure&) {
    std::error_code error;
    fs::remove_all(directory_, error);
    throw;
  }
}

void BusDaemon::start(const std::string& errorFile) {
  const std::string file = directory_ + "/bus.conf";
  const std::string text = configuration(directory_ + "/bus");
  writeUserFile(file, {text.begin(), text.end()});
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) throw Failure("cannot start dbus-daemon: too many open files");
  platform::FileDescriptor reader(ends[0]);
  platform::FileDescriptor writer(ends[1]);
  fcntl(writer.get(), F_SETFD, 0);
  process_ =
      startProgram({"dbus-daemon", "--nofork", "--nopidfile", "--nosyslog", "--config-file=" + file,
                    "--print-address=" + std::to_string(writer.get())},
                   errorFile);
  writer = platform::FileDescriptor();
  address_ = readAddress(reader.get());
  if (!address_.empty()) return;
  endProgram(process_);
  throw Failure("cannot start dbus-daemon (see " + errorFile + "); is the package dbus installed?");
}

BusDaemon::~BusDaemon() {
  endProgram(process_);
  std::error_code error;
  fs::remove_all(directory_, error);
}

void BusDaemon::removeRemains(const std::string& address) {
  const fs::path socket = socketPath(address);
  const fs::path directory = socket.parent_path();
  struct stat status {};
  const bool isOurs = directory.filename().string().starts_with(directoryPrefix) &&
                      lstat(directory.c_str(), &status) == 0 && S_ISDIR(status.st_mode) &&
                      status.st_uid == getuid();
  std::error_code error;
  if (!isOurs) return;
  fs::remove(socket, error);
  fs::remove(directory / "bus.conf", error);
  fs::remove(directory, error);
}

}  // namespace tool
