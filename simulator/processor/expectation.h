// What the programs here check, and print.
#pragma once

#include <cstdio>
#include <string>
#include <vector>

// Prints if both are equal, and otherwise both. Returns true if they are.
inline bool isAsExpected(const std::string& what, const std::vector<std::string>& found,
                         const std::vector<std::string>& expected) {
  std::printf("%s: %s\n", what.c_str(), found == expected ? "right" : "wrong");
  if (found == expected) return true;
  for (const std::string& each : found) std::printf("  found    %s\n", each.c_str());
  for (const std::string& each : expected) std::printf("  expected %s\n", each.c_str());
  return false;
}
