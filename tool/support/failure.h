// The failures of commands.
#pragma once

#include "preferences/failure.h"

namespace tool {

using preferences::ExitCode;
using preferences::Failure;

}  // namespace tool
