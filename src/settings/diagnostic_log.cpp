#include "settings/diagnostic_log.h"

#include "platform/date.h"
#include "platform/string_file.h"
#include "settings/device_paths.h"

namespace lumora {

void logToFile(const std::string& message) {
  std::string log = platform::stringWithContentsOfFile(logPath).value_or("");
  log += message + " --- Date: " + platform::currentDateDescription() + "\n";
  platform::writeStringToFileAtomically(log, logPath);
}

}  // namespace lumora
