#include "hooks/hook_table.h"

namespace {

// Runs when the library is loaded.
__attribute__((constructor)) void initialize() {
  lumora::installHooks();
}

}  // namespace
