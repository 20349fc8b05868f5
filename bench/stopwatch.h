// Times of several ways to do the same, taken in turn, so that what else the machine does hits all.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace bench {

using Way = std::function<void()>;

// For each way the median of its times, in milliseconds; each turn is a run that does not count,
// and three that do. prepare runs in front of each, outside of the measure.
std::vector<double> medianMilliseconds(int rounds, const Way& prepare,
                                       const std::vector<Way>& ways);

// Prints a line of a table: the first cell to the left, the others to the right.
void printRow(const std::vector<std::string>& cells);
std::string rounded(double value, int digits);

// Says whether a goal holds, in a line of its own.
void printGoal(const std::string& text, bool holds);

}  // namespace bench
