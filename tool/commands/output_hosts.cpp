#include "tool/commands/output_hosts.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "command_line/failure.h"
#include "tool/support/child_process.h"

namespace tool {

using command_line::Failure;

using platform::backend::FileDescriptor;

OutputHosts::OutputHosts(const DeviceFolder& desktop, Names names, Run run)
    : names_(std::move(names)),
      run_(std::move(run)),
      changes_(inotify_init1(IN_CLOEXEC | IN_NONBLOCK)) {
  const auto folder = folderOfOutputs(desktop);
  mkdir(folder.c_str(), 0700);
  constexpr auto kinds = IN_MOVED_FROM | IN_MOVED_TO | IN_ATTRIB | IN_ONLYDIR;
  inotify_add_watch(changes_.get(), folder.c_str(), kinds);
  int ends[2];
  if (pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0) {
    throw Failure(std::string("cannot start a process: ") + std::strerror(errno));
  }
  launches_ = FileDescriptor(ends[0]);
  launched_ = FileDescriptor(ends[1]);
  for (const std::string& name : names_()) start(name, true);
}

OutputHosts::~OutputHosts() {
  for (const auto& [name, host] : hosts_) {
    if (host.process > 0) endProgram(host.process);
  }
}

void OutputHosts::start(const std::string& name, bool isShown) {
  const pid_t process = startProcess([&] {
    return run_(name, [&] {
      const std::string line = name + '\n';
      [[maybe_unused]] const ssize_t size = write(launched_.get(), line.data(), line.size());
    });
  });
  hosts_[name] = {process, isShown};
}

void OutputHosts::update() {
  noteLaunches();
  for (auto& [name, host] : hosts_) {
    if (host.process > 0 && waitpid(host.process, nullptr, WNOHANG) == host.process) host = {};
  }
  const auto names = names_();
  for (auto& [name, host] : hosts_) {
    if (!std::ranges::binary_search(names, name)) host.isShown = false;
  }
  const auto changed = takeChanges();
  for (const std::string& name : names) {
    const auto host = hosts_.find(name);
    const bool isNew = host == hosts_.end();
    if (isNew || (host->second.process < 0 && changed.contains(name))) start(name, false);
  }
}

void OutputHosts::endRemoved() {
  const auto names = names_();
  std::erase_if(hosts_, [&names](const auto& entry) {
    if (std::ranges::binary_search(names, entry.first)) return false;
    if (entry.second.process > 0) endProgram(entry.second.process);
    return true;
  });
}

// Returns the names of the folders that were added, removed or touched.
std::set<std::string> OutputHosts::takeChanges() {
  std::set<std::string> names;
  alignas(inotify_event) char changes[4096];
  for (ssize_t size = 0; (size = read(changes_.get(), changes, sizeof changes)) > 0;) {
    for (ssize_t at = 0; at < size;) {
      const auto* event = reinterpret_cast<const inotify_event*>(changes + at);
      if (event->len > 0) names.emplace(event->name);
      at += static_cast<ssize_t>(sizeof *event + event->len);
    }
  }
  return names;
}

void OutputHosts::noteLaunches() {
  char buffer[4096];
  for (ssize_t size = 0; (size = read(launches_.get(), buffer, sizeof buffer)) > 0;) {
    unread_.append(buffer, static_cast<std::size_t>(size));
  }
  for (std::size_t end = 0; (end = unread_.find('\n')) != unread_.npos;) {
    const auto host = hosts_.find(unread_.substr(0, end));
    if (host != hosts_.end()) host->second.isShown = true;
    unread_.erase(0, end + 1);
  }
}

std::vector<std::string> OutputHosts::shown() const {
  std::vector<std::string> names;
  for (const auto& [name, host] : hosts_) {
    if (host.isShown) names.push_back(name);
  }
  return names;
}

}  // namespace tool
