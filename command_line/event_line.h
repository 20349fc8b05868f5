// Lines that say when something has happened, for commands that run until they are interrupted.
#pragma once

#include <chrono>
#include <string>

namespace command_line {

// Returns the local time in milliseconds, such as "09:41:00.123".
std::string timeOfDay(std::chrono::system_clock::time_point time);
// Returns date and time in UTC, such as "2026-11-22T09:41:00.123Z".
std::string timestamp(std::chrono::system_clock::time_point time);

// Prints the time of day and the text as a line, at once.
void printEvent(std::chrono::system_clock::time_point time, const std::string& text);

}  // namespace command_line
