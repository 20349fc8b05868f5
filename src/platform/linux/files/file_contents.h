// Reads and writes whole files, named by device path or by name in an open directory. Any thread.
// Nothing throws, but exceptions of a MakeFile pass through.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string>

#include "platform/data.h"
#include "platform/linux/files/file_descriptor.h"

namespace platform::backend {

// Larger files are not read: a huge sparse file must not use up the memory.
constexpr std::size_t maxFileSize = std::size_t{1} << 28;

struct OpenFile {
  FileDescriptor descriptor;
  std::size_t size = 0;
};

// Opens a file for reading. Returns nothing if it is missing, unreadable, not a regular file, a
// link, or larger than limit bytes.
std::optional<OpenFile> openFile(const std::string& path, std::size_t limit = maxFileSize);
std::optional<OpenFile> openFileAt(int directory, const std::string& name,
                                   std::size_t limit = maxFileSize);

// Reads bytes from offset on. Returns how many could be read, which is fewer than wanted at the end
// of the file or after an error.
std::size_t readAt(const FileDescriptor& file, std::size_t offset, std::span<std::uint8_t> wanted);

// Reads a file into memory. Returns nothing if openFile does or if memory runs out.
std::optional<Bytes> contentsOfFile(const std::string& path, std::size_t limit = maxFileSize);
// Returns nothing if memory runs out.
std::optional<Bytes> contentsOf(const OpenFile& file);

// Returns false if not all of the contents could be written.
bool writeAll(const FileDescriptor& file, std::span<const std::uint8_t> contents);

// Writes the whole contents of one file to the other. Returns false if they could not all be
// copied.
bool copyFile(const FileDescriptor& from, const FileDescriptor& to);

// Creates a file and opens it for writing. Returns no descriptor if there is one of this name or if
// it cannot be created.
FileDescriptor createFile(int directory, const std::string& name);

// Durable: a replaced file is on the disk before the function returns, and so survives a power cut.
enum class Durability { Cached, Durable };

// Creates a file of this random, unused name. Returns false if it is incomplete.
using MakeFile = std::function<bool(int directory, const std::string& name)>;
// Calls make and renames the file that it creates to path, in place of an old one. Returns false,
// with the old file unchanged, if either fails.
bool replaceFile(const std::string& path, const MakeFile& make,
                 Durability durability = Durability::Cached);
bool replaceFileAt(int directory, const std::string& name, const MakeFile& make,
                   Durability durability = Durability::Cached);

// Replaces a file by one with these contents. Returns false, with the old file unchanged, if this
// fails.
bool writeToFileAtomically(const Bytes& contents, const std::string& path,
                           Durability durability = Durability::Cached);

// Flushes a file and its directory to the disk. Returns false if this fails.
bool makeDurable(const std::string& path);

}  // namespace platform::backend
