#include "phone/file_owner.h"

#include <grp.h>
#include <sys/stat.h>
#include <unistd.h>

#include "command_line/failure.h"

namespace phone {

void workAsOwner() {
  // The home screen must be able to read what is written.
  umask(S_IWGRP | S_IWOTH);
  struct stat home {};
  if (geteuid() != 0 || stat("/var/mobile", &home) != 0 || home.st_uid == 0) return;
  if (setgroups(1, &home.st_gid) != 0 || setgid(home.st_gid) != 0 || setuid(home.st_uid) != 0) {
    throw command_line::Failure("cannot work as the owner of /var/mobile");
  }
}

}  // namespace phone
