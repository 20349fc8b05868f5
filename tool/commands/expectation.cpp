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

std::vector<std::string> namesIn(const std::string& path) {
  std::vector<std::string> names;
  std::istringstream text(path);
  for (std::string name; std::getline(text, name, '.');) names.push_back(name);
  return names;
}

// Returns "; it has: playing, frame" or, if the value is no object, "".
std::string fieldsOf(const ordered_json& value) {
  if (!value.is_object()) return "";
  std::string text;
  for (const auto& [name, field] : value.items()) text += (text.empty() ? "" : ", ") + name;
  return "; it has: " + (text.empty() ? "nothing" : text);
}

}  // namespace

Expectation expectationIn(const std::vector<std::string>& words, std::size_t first) {
  if (words.size() < first + 2) throw Failure("this needs a path and a value");
  std::string value = words[first + 1];
  for (std::size_t at = first + 2; at < words.size(); ++at) value += " " + words[at];
  return {words[first], valueOf(value)};
}

std::string problemWith(const ordered_json& status, const Expectation& expectation) {
  ordered_json::json_pointer found;
  for (const std::string& name : namesIn(expectation.path)) {
    const ordered_json& above = status.at(found);
    found /= name;
    if (!status.contains(found)) return "there is no field " + name + fieldsOf(above);
  }
  const ordered_json& value = status.at(found);
  return isSame(value, expectation.value) ? "" : "found " + dumped(value);
}

}  // namespace tool
