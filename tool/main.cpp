// lumora: controls a device's settings and its home screen from the command line.

#include "command_line/main_function.h"
#include "platform/linux/freed_memory.h"
#include "tool/command_line.h"

int main(int argc, char** argv) {
  platform::backend::keepFreedMemory();
  return command_line::runMain("lumora", [=] {
    return tool::performLine({argv + 1, argv + argc});
  });
}
