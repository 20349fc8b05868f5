// The device's files, named by absolute device paths ("/var/mobile/..."). Any thread. No function
// throws; those that return bool return false if they fail. A path that is empty, contains a NUL
// or, on a device, is not UTF-8 names nothing. On Linux, symbolic links are never followed: a link
// does not exist and cannot be copied, and is itself what is removed or moved.
#pragma once

#include <string>

namespace platform {

// Returns the part after the last slash, ignoring trailing slashes. Returns "" for "", and "/" for
// a path of slashes only.
std::string lastPathComponent(const std::string& path);
// Returns the path without its last component's extension: "/a/b" for "/a/b.gif". Returns a path
// without an extension unchanged, except for trailing slashes, which are removed.
std::string stringByDeletingPathExtension(const std::string& path);

// Returns true if there is a file or a directory at path.
bool fileExistsAtPath(const std::string& path);
// Also sets isDirectory, but only if the item exists.
bool fileExistsAtPath(const std::string& path, bool& isDirectory);
// Creates a directory and all missing parents. Returns true if the directory exists afterwards, and
// false if a file is in the way or a parent cannot be created.
bool createDirectoryAtPath(const std::string& path);
// Removes a file, or a directory with everything in it. Returns false if there is nothing at path
// or if something could not be removed; the rest of a directory may be gone then.
bool removeItemAtPath(const std::string& path);
// Moves a file or a directory. Returns false if path does not exist, if target does, or if the
// directory of target does not exist.
bool moveItemAtPath(const std::string& path, const std::string& target);
// Copies a file; fails as moveItemAtPath does. Requires a regular file: whether directories can be
// copied depends on the platform.
bool copyItemAtPath(const std::string& path, const std::string& target);

}  // namespace platform
