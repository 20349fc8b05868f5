// The `expect` lines of a script, which check the status.
#pragma once

#include <string>
#include <vector>

#include <nlohmann/json.hpp>

namespace tool {

// Checks a value of the status, the object that `lumora status --json` prints. words: "expect", the
// path of the value, such as locations.shared.playing, and the expected value, which may be several
// words. Throws Failure if the value differs or is missing, or if the line is wrong.
void expect(const nlohmann::ordered_json& status, const std::vector<std::string>& words);

}  // namespace tool
