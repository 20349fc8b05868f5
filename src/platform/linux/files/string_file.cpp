#include "platform/string_file.h"

#include <utf8cpp/utf8.h>

#include "platform/linux/files/file_contents.h"

namespace platform {
using namespace backend;

std::optional<std::string> stringWithContentsOfFile(const std::string& path) {
  const auto contents = contentsOfFile(path);
  if (!contents || !utf8::is_valid(contents->begin(), contents->end())) return std::nullopt;
  return std::string(contents->begin(), contents->end());
}

bool writeStringToFileAtomically(const std::string& text, const std::string& path) {
  // A file that is too large to be read must not be lost.
  if (openFile(path, SIZE_MAX) && !openFile(path)) return false;
  return writeToFileAtomically(Bytes(text.begin(), text.end()), path);
}

}  // namespace platform
