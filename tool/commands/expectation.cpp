#include "tool/commands/expectation.h"

#include <sstream>

#include "tool/support/failure.h"

namespace tool {
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

// Returns the value at a path such as locations.shared.playing. Throws Failure if there is none.
ordered_json valueAt(const ordered_json& status, const std::string& path) {
  ordered_json::json_pointer pointer;
  std::istringstream names(path);
  for (std::string name; std::getline(names, name, '.');) pointer /= name;
  if (!status.contains(pointer)) throw Failure("the status has no such field");
  return status.at(pointer);
}

}  // namespace

void expect(const ordered_json& status, const std::vector<std::string>& words) {
  constexpr std::size_t minWords = 3;
  if (words.size() < minWords) throw Failure("expect needs a path and a value");
  std::string expected = words[2];
  for (std::size_t at = minWords; at < words.size(); ++at) expected += " " + words[at];
  const ordered_json found = valueAt(status, words[1]);
  if (!isSame(found, valueOf(expected))) throw Failure("found " + found.dump());
}

}  // namespace tool
