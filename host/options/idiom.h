// The two kinds of device.
#pragma once

#include "platform/device.h"

namespace host {

using Idiom = platform::UIUserInterfaceIdiom;

}  // namespace host
