// Whole files, in memory and on disk. Device paths, or names in a directory that is open; any
// thread; nothing throws.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string>

#include "platform/data.h"
#include "platform/linux/files/file_descriptor.h"

namespace platform::backend {

// No file that the system reads is larger; a sparse giant must not take the memory.
constexpr std::size_t maxFileSize = std::size_t{1} << 28;

struct OpenFile {
  FileDescriptor descriptor;
  std::size_t size = 0;
};

// A regular file of at most so many bytes, open for reading; a link is not followed.
std::optional<OpenFile> openFile(const std::string& path, std::size_t limit = maxFileSize);
std::optional<OpenFile> openFileAt(int directory, const std::string& name,
                                   std::size_t limit = maxFileSize);

// How many bytes could be read from there on: fewer than wanted at the end of the file.
std::size_t readAt(const FileDescriptor& file, std::size_t offset, std::span<std::uint8_t> wanted);

// The contents stay in the file, which must not change; what can no longer be read is missing.
DataRef dataOfFile(OpenFile file);

std::optional<Bytes> contentsOfFile(const std::string& path, std::size_t limit = maxFileSize);
std::optional<Bytes> contentsOf(const OpenFile& file);

bool writeAll(const FileDescriptor& file, std::span<const std::uint8_t> contents);

// Copies a whole file, whatever its offset, to where the other one ends.
bool copyFile(const FileDescriptor& from, const FileDescriptor& to);

// A new file, open for writing; no descriptor if it cannot be made.
FileDescriptor createFile(int directory, const std::string& name);

// Whether a file that was replaced is on the disk by then, so that a power cut cannot take it.
enum class Durability { Cached, Durable };

// Puts a new file in the place of an old one, in one rename. make(directory, name) makes it under
// that name, which is new and cannot be foreseen, and says whether it is whole.
using MakeFile = std::function<bool(int directory, const std::string& name)>;
bool replaceFile(const std::string& path, const MakeFile& make,
                 Durability durability = Durability::Cached);
bool replaceFileAt(int directory, const std::string& name, const MakeFile& make,
                   Durability durability = Durability::Cached);

bool writeToFileAtomically(const Bytes& contents, const std::string& path,
                           Durability durability = Durability::Cached);

// Writes a file and its directory's entry for it to the disk.
bool makeDurable(const std::string& path);

}  // namespace platform::backend
