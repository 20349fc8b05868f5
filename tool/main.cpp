// lumora: controls a device's settings and its home screen from the command line.

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <exception>
#include <filesystem>
#include <new>
#include <span>
#include <string>

#include <dlfcn.h>
#include <unistd.h>

#include "platform/linux/freed_memory.h"
#include "tool/commands_library.h"
#include "tool/device/frame_files.h"
#include "tool/support/failure.h"
#include "tool/support/terminal.h"

namespace {

// Throws Failure if output was lost, so that a script does not take it for complete.
void finishOutput() {
  if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
    throw tool::Failure("cannot write the output; check the free space");
  }
}

// Returns the path of a library in the directory of those that the program has loaded. Searching by
// name would start from whoever calls dlopen in the end, which may be a sanitizer.
std::string pathOfLibrary(const char* name) {
  Dl_info loaded{};
  dladdr(reinterpret_cast<void*>(&platform::backend::keepFreedMemory), &loaded);
  const std::filesystem::path path(loaded.dli_fname ? loaded.dli_fname : "");
  return (path.parent_path() / name).string();
}

// Loads the library with all commands.
int performByLibrary(std::span<char*> words) {
  void* library = dlopen(pathOfLibrary("liblumora-commands.so").c_str(), RTLD_NOW);
  void* perform = library ? dlsym(library, "lumoraPerformLine") : nullptr;
  if (!perform) throw tool::Failure(std::string("cannot load the commands: ") + dlerror());
  return reinterpret_cast<decltype(&lumoraPerformLine)>(perform)(static_cast<int>(words.size()),
                                                                 words.data());
}

// Returns true for "frames GIF DIR" without options.
bool onlyWritesFrames(std::span<char*> words) {
  auto isPlain = [](const char* word) { return word[0] != '-' && word[0] != '\0'; };
  return words.size() == 3 && std::strcmp(words[0], "frames") == 0 &&
         std::ranges::all_of(words, isPlain);
}

// Loading the library takes longer than writing the frames of a small GIF, which scripts do for
// many.
int perform(std::span<char*> words) {
  if (!onlyWritesFrames(words)) return performByLibrary(words);
  tool::writeFrames(words[1], words[2]);
  return tool::ExitCode::Done;
}

}  // namespace

int main(int argc, char** argv) {
  platform::backend::keepFreedMemory();
  try {
    const int code = perform({argv + 1, argv + argc});
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
