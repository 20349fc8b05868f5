#include "host/throw_record.h"

#include <cxxabi.h>
#include <dlfcn.h>
#include <execinfo.h>

namespace host {
namespace {

thread_local Backtrace thrown;

}  // namespace

Backtrace Backtrace::here() {
  Backtrace trace;
  trace.size = backtrace(trace.frames.data(), maxFrames);
  return trace;
}

const Backtrace& lastThrow() {
  return thrown;
}

}  // namespace host

// Takes the place of the C++ library's function in the whole process, and calls it.
// NOLINTNEXTLINE(bugprone-reserved-identifier)
extern "C" void __cxa_throw(void* exception, std::type_info* type, void (*destroy)(void*)) {
  using Throw = void (*)(void*, std::type_info*, void (*)(void*));
  static const auto original = reinterpret_cast<Throw>(dlsym(RTLD_NEXT, "__cxa_throw"));
  host::thrown = host::Backtrace::here();
  original(exception, type, destroy);
  __builtin_unreachable();
}
