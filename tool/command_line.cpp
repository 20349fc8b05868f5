#include "tool/command_line.h"

#include <memory>
#include <utility>

#include <CLI/CLI.hpp>

#include "command_line/parser.h"
#include "tool/commands/autostart_command.h"
#include "tool/commands/backdrop_command.h"
#include "tool/commands/blur_command.h"
#include "tool/commands/command.h"
#include "tool/commands/desktop_commands.h"
#include "tool/commands/forget_command.h"
#include "tool/commands/frames_command.h"
#include "tool/commands/host_commands.h"
#include "tool/commands/notification_commands.h"
#include "tool/commands/play_command.h"
#include "tool/commands/record_command.h"
#include "tool/commands/remove_command.h"
#include "tool/commands/run_command.h"
#include "tool/commands/screen_commands.h"
#include "tool/commands/set_command.h"
#include "tool/commands/shared_commands.h"
#include "tool/commands/status_command.h"
#include "tool/commands/trace_command.h"
#include "tool/commands/views_command.h"
#include "tool/program.h"

namespace tool {
namespace {

void declareCommands(CLI::App& lumora, Context& context) {
  declare(lumora, context, theProgram());
  lumora
      .add_option(
          "--root", context.root,
          "folder that holds everything about one home screen (default: $LUMORA_ROOT, or lumora in "
          "$XDG_DATA_HOME or ~/.local/share)")
      ->type_name("DIR");
  addRunCommand(lumora, context);
  addSetCommand(lumora, context);
  addRemoveCommand(lumora, context);
  addScreenCommands(lumora, context);
  addRecordCommand(lumora, context);
  addHostCommands(lumora, context);
  addSharedCommands(lumora, context);
  addBackdropCommand(lumora, context);
  addBlurCommand(lumora, context);
  addStatusCommand(lumora, context);
  addDesktopCommands(lumora, context);
  addAutostartCommand(lumora, context);
  addForgetCommand(lumora, context);
  addNotificationCommands(lumora, context);
  addViewsCommand(lumora, context);
  addTraceCommand(lumora, context);
  addPlayCommand(lumora, context);
  addFramesCommand(lumora, context);
}

}  // namespace

std::function<int()> parseLine(std::vector<std::string> words) {
  CLI::App lumora;
  const auto context = std::make_shared<Context>();
  context->performLine = performLine;
  declareCommands(lumora, *context);
  return command_line::parse(lumora, context, std::move(words));
}

int performLine(std::vector<std::string> words) {
  return parseLine(std::move(words))();
}

void withCommands(const std::function<void(const CLI::App& lumora)>& visit) {
  CLI::App lumora;
  Context context;
  declareCommands(lumora, context);
  visit(lumora);
}

}  // namespace tool
