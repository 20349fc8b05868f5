// A log file for debugging. No other part of the library writes to it.
#pragma once

#include <string>

namespace lumora {

// Appends an entry with the message and the date to the log file. Rewrites the whole file, so it is
// too slow for loops. Starts a new log if the old one is not UTF-8. Does nothing if the file cannot
// be written. Any thread; nothing is locked, so one of two simultaneous entries may be lost.
void logToFile(const std::string& message);

}  // namespace lumora
