// lumora: controls a device's settings and its home screen from the command line.

#include <cstdio>
#include <exception>
#include <new>

#include <unistd.h>

#include "platform/linux/freed_memory.h"
#include "tool/command_line.h"
#include "tool/support/failure.h"
#include "tool/support/terminal.h"

namespace {

// Throws Failure if output was lost, so that a script does not take it for complete.
void finishOutput() {
  if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
    throw tool::Failure("cannot write the output; check the free space");
  }
}

}  // namespace

int main(int argc, char** argv) {
  platform::backend::keepFreedMemory();
  try {
    const int code = tool::performLine({argv + 1, argv + argc});
    finishOutput();
    return code;
  } catch (const tool::Failure& failure) {
    std::fprintf(stderr, "lumora: %s\n", tool::printable(failure.what(), STDERR_FILENO).c_str());
    if (!failure.help().empty()) std::fputs(failure.help().c_str(), stderr);
    return failure.code();
  } catch (const std::bad_alloc&) {
    std::fprintf(stderr, "lumora: out of memory\n");
    return tool::ExitCode::Failed;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "lumora: %s\n", error.what());
    return tool::ExitCode::Failed;
  }
}
