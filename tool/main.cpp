// lumora: the settings of a device on the command line, and the hand on its home screen.

#include <cstdio>
#include <exception>
#include <sstream>
#include <string>

#include <CLI/CLI.hpp>

#include "tool/appearance_commands.h"
#include "tool/command.h"
#include "tool/failure.h"
#include "tool/frames_command.h"
#include "tool/run_command.h"
#include "tool/screen_commands.h"
#include "tool/settings_commands.h"
#include "tool/status_command.h"

namespace {

void declareCommands(CLI::App& lumora, tool::Context& context) {
  lumora.set_version_flag("--version", "lumora " LUMORA_VERSION);
  lumora
      .add_option("--root", context.root,
                  "folder of the device (else $LUMORA_ROOT, else ~/.local/share/lumora)")
      ->type_name("DIR");
  lumora.fallthrough();
  lumora.require_subcommand(1);
  tool::addRunCommand(lumora, context);
  tool::addScreenCommands(lumora, context);
  tool::addSettingsCommands(lumora, context);
  tool::addAppearanceCommands(lumora, context);
  tool::addStatusCommand(lumora, context);
  tool::addNotificationCommands(lumora, context);
  tool::addFramesCommand(lumora, context);
}

std::string problem(const CLI::App& lumora, const CLI::ParseError& error) {
  if (!lumora.get_subcommands().empty()) return error.what();
  const auto unknown = lumora.remaining();
  return unknown.empty() ? error.what() : "there is no command '" + unknown.front() + "'";
}

int reportWrongUse(const CLI::App& lumora, const CLI::ParseError& error) {
  const auto commands = lumora.get_subcommands();
  const std::string help =
      commands.empty() ? lumora.help() : commands.front()->help(lumora.get_name());
  std::fprintf(stderr, "lumora: %s\n\n%s", problem(lumora, error).c_str(), help.c_str());
  return tool::ExitCode::WrongUse;
}

// A cut output must not pass for a whole one.
void finishOutput() {
  if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
    throw tool::Failure("cannot write the output: is there space?");
  }
}

int parseAndPerform(int argc, char** argv) {
  CLI::App lumora("An animated GIF behind the icons of a phone's home screen.", "lumora");
  tool::Context context;
  declareCommands(lumora, context);
  try {
    lumora.parse(argc, argv);
    return context.action();
  } catch (const CLI::Success& asked) {
    std::ostringstream answer;
    const int code = lumora.exit(asked, answer);
    std::fputs(answer.str().c_str(), stdout);
    return code;
  } catch (const CLI::ParseError& error) {
    return reportWrongUse(lumora, error);
  }
}

}  // namespace

int main(int argc, char** argv) {
  try {
    const int code = parseAndPerform(argc, argv);
    finishOutput();
    return code;
  } catch (const tool::Failure& failure) {
    std::fprintf(stderr, "lumora: %s\n", failure.what());
    return failure.code();
  } catch (const std::exception& error) {
    std::fprintf(stderr, "lumora: %s\n", error.what());
    return tool::ExitCode::Failed;
  }
}
