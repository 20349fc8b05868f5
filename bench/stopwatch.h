// Times several ways to do the same in turn, so that other load on the machine affects all of them.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace bench {

using Way = std::function<void()>;

// Returns the median time of each way in milliseconds. A turn is one run that is not timed and
// three that are. `prepare` runs before each and is not timed.
std::vector<double> medianMilliseconds(int rounds, const Way& prepare,
                                       const std::vector<Way>& ways);

// Prints a row of a table: the first cell aligned to the left, the others to the right.
void printRow(const std::vector<std::string>& cells);
std::string rounded(double value, int digits);

// Prints a line with a goal and "holds" or "MISSED".
void printGoal(const std::string& text, bool holds);

}  // namespace bench
