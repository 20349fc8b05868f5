// What the home screen is doing.
#pragma once

#include <nlohmann/json.hpp>

#include "tool/commands/command.h"

namespace tool {

// The same object as `lumora status --json` prints; host may be nullptr.
nlohmann::ordered_json currentStatus(HostConnection* host);

void addStatusCommand(CLI::App& lumora, Context& context);

}  // namespace tool
