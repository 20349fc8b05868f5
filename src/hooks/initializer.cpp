#include "hooks/hook_table.h"

namespace {

// The hooking loader, or whoever maps the library into a home-screen process, runs this.
__attribute__((constructor)) void initialize() {
  lumora::installHooks();
}

}  // namespace
