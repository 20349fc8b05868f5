#include "tool/user_file.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <limits>

#include <unistd.h>

#include "tool/failure.h"

namespace tool {
namespace {

constexpr std::uintmax_t largestFile = std::numeric_limits<std::int32_t>::max();

[[noreturn]] void fail(const char* verb, const std::string& path) {
  throw Failure(std::string("cannot ") + verb + " " + path + ": " + std::strerror(errno));
}

}  // namespace

std::vector<std::uint8_t> readUserFile(const std::string& path) {
  std::error_code error;
  if (std::filesystem::exists(path, error) && !std::filesystem::is_regular_file(path, error)) {
    throw Failure("cannot read " + path + ": not a regular file");
  }
  std::ifstream file(path, std::ios::binary);
  if (!file) fail("read", path);
  const auto size = std::filesystem::file_size(path, error);
  if (error || size > largestFile) throw Failure("cannot read " + path + ": too large");
  std::vector<std::uint8_t> contents(size);
  file.read(reinterpret_cast<char*>(contents.data()), static_cast<std::streamsize>(size));
  if (!file) fail("read", path);
  return contents;
}

void writeUserFile(const std::string& path, const std::vector<std::uint8_t>& contents) {
  const std::string temporary = path + "." + std::to_string(getpid()) + ".tmp";
  std::ofstream file(temporary, std::ios::binary | std::ios::trunc);
  if (!file) fail("write", path);
  file.write(reinterpret_cast<const char*>(contents.data()),
             static_cast<std::streamsize>(contents.size()));
  file.close();
  std::error_code error;
  if (file) std::filesystem::rename(temporary, path, error);
  if (file && !error) return;
  if (error) errno = error.value();
  const int reason = errno;
  std::filesystem::remove(temporary, error);
  errno = reason;
  fail("write", path);
}

}  // namespace tool
