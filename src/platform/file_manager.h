// The device's files, named by absolute device paths ("/var/mobile/..."). Any thread. Every
// function returns true if it did what it says; none throws. An empty path, and one with a NUL,
// names nothing. On Linux a link counts as nothing, too.
#pragma once

#include <string>

namespace platform {

// The part after the last slash, trailing slashes aside; "" of "".
std::string lastPathComponent(const std::string& path);
// The path without its last component's extension: "/a/b.gif" gives "/a/b".
std::string stringByDeletingPathExtension(const std::string& path);

bool fileExistsAtPath(const std::string& path);
// isDirectory is written only where something exists.
bool fileExistsAtPath(const std::string& path, bool& isDirectory);
// With all missing directories on the way to it. Also true if it is there already.
bool createDirectoryAtPath(const std::string& path);
// A directory goes with everything in it.
bool removeItemAtPath(const std::string& path);
// Both fail if there is something at the target.
bool moveItemAtPath(const std::string& path, const std::string& target);
bool copyItemAtPath(const std::string& path, const std::string& target);

}  // namespace platform
