#include "hooks/hook_table.h"

namespace {

// The hooking loader, or whoever maps the library into a home-screen process, runs this.
__attribute__((constructor)) void initialise() {
  lumora::installHooks();
}

}  // namespace
