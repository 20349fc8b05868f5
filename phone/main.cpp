// lumora on the phone: chooses and adjusts the animated wallpapers from the command line.

#include "command_line/main_function.h"
#include "phone/program.h"
#include "platform/autorelease_pool.h"

int main(int argc, char** argv) {
  const platform::NSAutoreleasePool pool;
  return command_line::runMain("lumora", [=] {
    return phone::performLine({argv + 1, argv + argc});
  });
}
