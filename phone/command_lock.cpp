#include "phone/command_lock.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include "command_line/failure.h"
#include "phone/stopwatch.h"

namespace phone {

CommandLock::CommandLock(double limit)
    : file_(open("/var/mobile/Library/Preferences/com.brightfen.lumora.lock",
                 O_RDWR | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR)) {
  constexpr useconds_t pause = 100'000;
  for (const Stopwatch waiting; file_ >= 0 && flock(file_, LOCK_EX | LOCK_NB) != 0;) {
    if (errno != EWOULDBLOCK) break;
    if (waiting.seconds() > limit) {
      close(file_);
      throw command_line::Failure("another lumora command has not finished before the timeout");
    }
    usleep(pause);
  }
}

CommandLock::~CommandLock() {
  if (file_ >= 0) close(file_);
}

}  // namespace phone
