// Keeps commands from changing wallpapers at the same time.
#pragma once

namespace phone {

class CommandLock {
 public:
  // Waits until no other process has the lock. Throws Failure after the limit, in seconds. If there
  // can be no lock file, there is no lock.
  explicit CommandLock(double limit);
  ~CommandLock();
  CommandLock(const CommandLock&) = delete;
  CommandLock& operator=(const CommandLock&) = delete;

 private:
  int file_;
};

}  // namespace phone
