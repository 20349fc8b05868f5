#include "tool/device/bus_daemon.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <vector>

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "command_line/failure.h"
#include "platform/linux/files/file_contents.h"
#include "tool/support/child_process.h"

namespace tool {

using command_line::Failure;

namespace {

namespace fs = std::filesystem;
using platform::backend::FileDescriptor;

constexpr auto prefix = "lumora-";
constexpr auto lockName = "lock";
constexpr const char* fileNames[] = {"bus", "bus.conf", lockName};

// Returns the configuration of a bus for one device: no services to activate, connections for
// hundreds of commands at once, and messages of up to 1 MiB, which is more than any of ours has.
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
  <limit name="max_message_size">1048576</limit>
  <limit name="max_incomplete_connections">10000</limit>
  <limit name="max_completed_connections">10000</limit>
  <limit name="max_connections_per_user">10000</limit>
</busconfig>
)";
}

// Returns true if the path is short and needs no quoting in the daemon's configuration or in an
// address.
bool isSuitable(const std::string& base) {
  constexpr std::size_t maxBaseLength = 64;
  return base.starts_with('/') && base.size() <= maxBaseLength &&
         std::ranges::all_of(base, [](unsigned char c) {
           return std::isalnum(c) || c == '/' || c == '-' || c == '_' || c == '.';
         });
}

std::vector<std::string> bases() {
  const char* runtime = std::getenv("XDG_RUNTIME_DIR");
  std::vector<std::string> suitable;
  if (runtime != nullptr && isSuitable(runtime)) suitable.emplace_back(runtime);
  suitable.emplace_back("/tmp");
  return suitable;
}

bool isOurFolder(const fs::path& path) {
  struct stat status {};
  return path.filename().string().starts_with(prefix) && lstat(path.c_str(), &status) == 0 &&
         S_ISDIR(status.st_mode) && status.st_uid == geteuid();
}

void removeFolder(const std::string& path) {
  for (const char* name : fileNames) unlink((path + "/" + name).c_str());
  rmdir(path.c_str());
}

FileDescriptor takeLock(const std::string& folder, int flags) {
  FileDescriptor lock(open((folder + "/" + lockName).c_str(),
                           O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC | flags, 0600));
  struct stat status {};
  // Another process may have locked the file first and removed the folder.
  const bool isTaken = lock && flock(lock.get(), LOCK_EX | LOCK_NB) == 0 &&
                       fstat(lock.get(), &status) == 0 && status.st_nlink > 0;
  return isTaken ? std::move(lock) : FileDescriptor();
}

// Deletes folders that no process uses. A process that uses one holds its lock.
void removeRemains(const std::string& base) {
  std::error_code error;
  for (fs::directory_iterator entry(base, error), end; !error && entry != end;
       entry.increment(error)) {
    const std::string folder = entry->path();
    if (!isOurFolder(folder)) continue;
    if (const FileDescriptor lock = takeLock(folder, 0)) removeFolder(folder);
  }
}

// Waits for the address that the daemon prints when it is ready. Returns "" if the daemon ends
// first or takes too long.
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

BusFolder::BusFolder() {
  // Another process may delete a new folder before this one has locked it.
  constexpr int attempts = 10;
  for (const std::string& base : bases()) {
    removeRemains(base);
    for (int attempt = 0; attempt < attempts; ++attempt) {
      std::string name = base + "/" + prefix + "XXXXXX";
      if (mkdtemp(name.data()) == nullptr) break;
      path_ = name;
      lock_ = takeLock(path_, O_CREAT);
      if (lock_) return;
      removeFolder(path_);
    }
  }
  throw Failure(std::string("cannot make a folder for the message bus in /tmp: ") +
                std::strerror(errno));
}

BusFolder::~BusFolder() {
  removeFolder(path_);
}

BusDaemon::BusDaemon(int errorFile) {
  const std::string file = folder_.path() + "/bus.conf";
  const std::string text = configuration(folder_.path() + "/bus");
  const FileDescriptor written = platform::backend::createFile(AT_FDCWD, file);
  if (!written || !platform::backend::writeAll(
                      written, {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()})) {
    throw Failure("cannot write " + file + "; check the free space");
  }
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) throw Failure("cannot start dbus-daemon: too many open files");
  const FileDescriptor reader(ends[0]);
  FileDescriptor writer(ends[1]);
  fcntl(writer.get(), F_SETFD, 0);
  process_ =
      startProgram({"dbus-daemon", "--nofork", "--nopidfile", "--nosyslog", "--config-file=" + file,
                    "--print-address=" + std::to_string(writer.get())},
                   errorFile);
  writer = FileDescriptor();
  address_ = readAddress(reader.get());
  if (!address_.empty()) return;
  endProgram(process_);
  throw Failure("cannot start dbus-daemon; is the package dbus installed?");
}

BusDaemon::~BusDaemon() {
  endProgram(process_);
}

}  // namespace tool
