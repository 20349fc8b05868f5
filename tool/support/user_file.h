// Files outside of the device folder that the user names on the command line.
#pragma once

#include <string>

#include "platform/data.h"
#include "platform/linux/files/file_descriptor.h"

namespace tool {

// Opens a regular file. Its bytes stay in the file and are read when needed. Throws Failure with
// the reason if it cannot be opened.
platform::DataRef openUserFile(const std::string& path);
// Returns what standard input gives until its end. Throws Failure if it cannot be read, or gives
// too much.
platform::DataRef readInput();
// The path that stands for standard input or output.
constexpr auto standardStream = "-";
// Returns the contents of a regular file or of standard input. Throws as above.
std::string readUserText(const std::string& path);

// Throws Failure if the file clearly cannot be written, so that a command fails before its work.
// "-" is standard output.
void checkUserFileIsWritable(const std::string& path);

// Replaces the file, or the target of a link, with a copy of contents, atomically. Throws Failure
// with the reason if it cannot, and leaves the file as it was. "-" is standard output.
void writeUserFile(const std::string& path, const platform::backend::FileDescriptor& contents);

}  // namespace tool
