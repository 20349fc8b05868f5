// What the lines `expect` and `wait until` of a script check.
#pragma once

#include <string>
#include <vector>

#include <nlohmann/json.hpp>

namespace tool {

struct Expectation {
  // Such as locations.shared.playing.
  std::string path;
  nlohmann::ordered_json value;
};

// Returns the expectation in the words of a line, which begins at first: a path, and a value, which
// may be several words. Throws Failure if one is missing.
Expectation expectationIn(const std::vector<std::string>& words, std::size_t first);

// Returns "" if the status is as expected, otherwise what was found, or which fields there are.
std::string problemWith(const nlohmann::ordered_json& status, const Expectation& expectation);

}  // namespace tool
