#include "tool/support/background.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "command_line/failure.h"
#include "platform/linux/files/file_descriptor.h"

namespace tool {

using command_line::ExitCode;
using command_line::Failure;

namespace {

using platform::backend::FileDescriptor;

void printInto(int log) {
  const FileDescriptor nothing(open("/dev/null", O_RDONLY | O_CLOEXEC));
  dup2(nothing.get(), STDIN_FILENO);
  for (const int stream : {STDOUT_FILENO, STDERR_FILENO}) dup2(log, stream);
}

void copy(int log, int stream) {
  char buffer[4096];
  off_t at = 0;
  for (ssize_t size = 0; (size = pread(log, buffer, sizeof buffer, at)) > 0; at += size) {
    if (write(stream, buffer, static_cast<std::size_t>(size)) != size) return;
  }
}

// Returns when the child is ready, or with its exit code.
int awaitReady(pid_t child, const FileDescriptor& pipe) {
  char byte = 0;
  if (read(pipe.get(), &byte, 1) == 1) return ExitCode::Done;
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : ExitCode::Failed;
}

}  // namespace

int inBackground(int log, const std::function<int(const std::function<void()>& ready)>& work) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) {
    throw Failure(std::string("cannot start a process: ") + std::strerror(errno));
  }
  FileDescriptor reader(ends[0]);
  FileDescriptor writer(ends[1]);
  const pid_t child = fork();
  if (child < 0) throw Failure(std::string("cannot start a process: ") + std::strerror(errno));
  if (child > 0) {
    writer = FileDescriptor();
    const int code = awaitReady(child, reader);
    copy(log, code == ExitCode::Done ? STDOUT_FILENO : STDERR_FILENO);
    return code;
  }
  reader = FileDescriptor();
  setsid();
  printInto(log);
  return work([&writer] {
    [[maybe_unused]] const ssize_t size = write(writer.get(), "", 1);
    writer = FileDescriptor();
  });
}

}  // namespace tool
