// JSON as text.
#pragma once

#include <string>

#include <nlohmann/json.hpp>

namespace command_line {

// Returns the text, on one line if indent is negative. Invalid UTF-8 becomes U+FFFD.
inline std::string dumped(const nlohmann::ordered_json& json, int indent = -1) {
  return json.dump(indent, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

}  // namespace command_line
