#include "tool/support/user_file.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "command_line/failure.h"
#include "platform/linux/files/byte_reader.h"
#include "platform/linux/files/data.h"

namespace tool {

using command_line::Failure;

namespace {

[[noreturn]] void fail(const char* verb, const std::string& path) {
  throw Failure(std::string("cannot ") + verb + " " + path + ": " + std::strerror(errno));
}

[[noreturn]] void failForSize(const std::string& path) {
  const std::size_t mebibytes = platform::backend::maxFileSize >> 20;
  throw Failure("cannot read " + path + ": it is larger than " + std::to_string(mebibytes) +
                " MiB");
}

}  // namespace

platform::DataRef openUserFile(const std::string& path) {
  // O_NONBLOCK, because opening a pipe would wait for a writer.
  platform::backend::FileDescriptor descriptor(
      open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
  struct stat status {};
  if (!descriptor || fstat(descriptor.get(), &status) != 0) fail("read", path);
  if (!S_ISREG(status.st_mode)) throw Failure("cannot read " + path + ": not a regular file");
  const auto size = static_cast<std::size_t>(status.st_size);
  if (size > platform::backend::maxFileSize) failForSize(path);
  return platform::backend::dataOfFile({std::move(descriptor), size});
}

platform::DataRef readInput() {
  platform::Bytes bytes;
  constexpr std::size_t step = std::size_t{1} << 16;
  for (;;) {
    const std::size_t size = bytes.size();
    bytes.resize(size + step);
    const ssize_t count = read(STDIN_FILENO, &bytes[size], step);
    if (count < 0 && errno != EINTR) fail("read", "standard input");
    bytes.resize(size + static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    if (count == 0) return platform::NSData::dataWithBytes(std::move(bytes));
    if (bytes.size() > platform::backend::maxFileSize) failForSize("standard input");
  }
}

std::string readUserText(const std::string& path) {
  const auto data = path == standardStream ? readInput() : openUserFile(path);
  std::string text(data->length(), '\0');
  platform::backend::ByteReader reader(data->impl());
  text.resize(reader.read({reinterpret_cast<std::uint8_t*>(text.data()), text.size()}));
  return text;
}

void checkUserFileIsWritable(const std::string& path) {
  std::error_code error;
  const std::filesystem::path file(path);
  if (path.empty()) throw Failure("cannot write a file without a name");
  if (path == standardStream) return;
  if (std::filesystem::exists(file, error) && !std::filesystem::is_regular_file(file, error)) {
    throw Failure("cannot write " + path + ": not a regular file");
  }
  const std::filesystem::path folder = file.has_parent_path() ? file.parent_path() : ".";
  if (access(folder.c_str(), W_OK | X_OK) != 0) fail("write", path);
}

void writeUserFile(const std::string& path, const platform::backend::FileDescriptor& contents) {
  if (path == standardStream) {
    const platform::backend::FileDescriptor output(dup(STDOUT_FILENO));
    if (!platform::backend::copyFile(contents, output)) fail("write", "standard output");
    return;
  }
  std::error_code error;
  // Replaces the target of a link instead of the link.
  std::filesystem::path target = std::filesystem::canonical(path, error);
  if (error) target = std::filesystem::absolute(path);
  const platform::backend::FileDescriptor folder(
      open(target.parent_path().c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
  const auto make = [&contents](int directory, const std::string& name) {
    const auto file = platform::backend::createFile(directory, name);
    return file && platform::backend::copyFile(contents, file);
  };
  if (!folder || !platform::backend::replaceFileAt(folder.get(), target.filename(), make))
    fail("write", path);
}

}  // namespace tool
