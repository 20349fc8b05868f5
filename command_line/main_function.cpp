#include "command_line/main_function.h"

#include <cstdio>
#include <exception>
#include <new>

#include <unistd.h>

#include "command_line/failure.h"
#include "command_line/terminal.h"

namespace command_line {
namespace {

void finishOutput() {
  if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
    throw Failure("cannot write the output; check the free space");
  }
}

}  // namespace

int runMain(const std::string& programName, const std::function<int()>& work) {
  const auto print = [&programName](const char* problem) {
    std::fprintf(stderr, "%s: %s\n", programName.c_str(),
                 printable(problem, STDERR_FILENO).c_str());
  };
  try {
    const int code = work();
    finishOutput();
    return code;
  } catch (const Failure& failure) {
    print(failure.what());
    if (!failure.help().empty()) std::fputs(failure.help().c_str(), stderr);
    return failure.code();
  } catch (const std::bad_alloc&) {
    print("out of memory");
  } catch (const std::exception& error) {
    print(error.what());
  }
  return ExitCode::Failed;
}

}  // namespace command_line
