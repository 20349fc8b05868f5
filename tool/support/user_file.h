// Files that the user names on the command line, anywhere on the machine.
#pragma once

#include <string>

#include "platform/data.h"
#include "platform/linux/files/file_descriptor.h"

namespace tool {

// The contents of a regular file, which stay there until they are read. Throws Failure with the
// reason.
platform::DataRef openUserFile(const std::string& path);
std::string readUserText(const std::string& path);

// Throws Failure if the file cannot be written, as far as that can be known before.
void checkUserFileIsWritable(const std::string& path);

// Replaces the file, or the one that a link of this name points at, by a copy of another, or leaves
// it as it was; throws Failure with the reason.
void writeUserFile(const std::string& path, const platform::backend::FileDescriptor& contents);

}  // namespace tool
