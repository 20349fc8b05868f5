// The lines of a script that say what the status must be.
#pragma once

#include <string>
#include <vector>

#include <nlohmann/json.hpp>

namespace tool {

// The words of one line: "expect", the path of a value in the status, as in
// locations.shared.playing, and the value, which may have several words. Throws Failure if it is
// another, or the line is wrong.
void expect(const nlohmann::ordered_json& status, const std::vector<std::string>& words);

}  // namespace tool
