#include "tool/commands/expectation.h"

#include <sstream>

#include "command_line/failure.h"
#include "command_line/json_text.h"

namespace tool {

using command_line::dumped;
using command_line::Failure;

namespace {

using nlohmann::ordered_json;

// Parses a value: JSON, or else the text itself.
ordered_json valueOf(const std::string& text) {
  auto value = ordered_json::parse(text, nullptr, false);
  return value.is_discarded() ? ordered_json(text) : value;
}

// Compares numbers in single precision, which speed, opacity and blur have.
bool isSame(const ordered_json& found, const ordered_json& expected) {
  if (!found.is_number() || !expected.is_number()) return found == expected;
  return found.get<float>() == expected.get<float>();
}

ordered_json::json_pointer pointerFor(const std::string& path) {
  ordered_json::json_pointer pointer;
  std::istringstream names(path);
  for (std::string name; std::getline(names, name, '.');) pointer /= name;
  return pointer;
}

}  // namespace

Expectation expectationIn(const std::vector<std::string>& words, std::size_t first) {
  if (words.size() < first + 2) throw Failure("this needs a path and a value");
  std::string value = words[first + 1];
  for (std::size_t at = first + 2; at < words.size(); ++at) value += " " + words[at];
  return {words[first], valueOf(value)};
}

std::string problemWith(const ordered_json& status, const Expectation& expectation) {
  const auto pointer = pointerFor(expectation.path);
  if (!status.contains(pointer)) return "the status has no such field";
  const ordered_json& found = status.at(pointer);
  return isSame(found, expectation.value) ? "" : "found " + dumped(found);
}

}  // namespace tool
