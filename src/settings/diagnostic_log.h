// The diagnostic log, for someone who looks for a fault: nothing in the library writes to it.
#pragma once

#include <string>

namespace lumora {

// Appends the message and the date as one entry to the log file. Reads and replaces the whole file,
// so it is not for loops; a log that is not UTF-8 is begun anew. Any thread, without a lock: of two
// entries made at the same moment one may be lost. Silent where the file cannot be written.
void logToFile(const std::string& message);

}  // namespace lumora
