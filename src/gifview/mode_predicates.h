// The two questions that the views ask of "MODE_INDEX". They are not each other's opposite: a mode
// of 2 is separate for the one and no mode at all for the other. Each reads the settings afresh.
#pragma once

#include "settings/settings_store.h"

namespace lumora {

inline bool isSeparateMode() {
  return getModeIndex() != 1;
}

inline bool isModeIndexZero() {
  return getModeIndex() == 0;
}

}  // namespace lumora
