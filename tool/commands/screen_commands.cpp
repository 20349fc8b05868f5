#include "tool/commands/screen_commands.h"

#include <memory>

#include "host/control/control_names.h"
#include "tool/support/user_file.h"

namespace tool {
namespace {

namespace method = host::control::method;

void takeScreenshot(const DeviceFolder& device, const std::string& path) {
  checkUserFileIsWritable(path);
  writeUserFile(path, HostConnection::require(device)->screenshot());
}

// Returns a function that calls one of the host's methods without arguments.
std::function<void()> call(const Context& context, const char* name) {
  return [&context, name] { HostConnection::require(context.device())->call(name); };
}

void addScreenshotCommand(CLI::App& lumora, Context& context) {
  auto path = std::make_shared<std::string>();
  auto* command = addCommand(lumora, context, "screenshot", "save what the screen shows now",
                             [&context, path] { takeScreenshot(context.device(), *path); });
  command->add_option("FILE.png", *path, "file to write")->required();
}

}  // namespace

void addScreenCommands(CLI::App& lumora, Context& context) {
  addScreenshotCommand(lumora, context);
  addCommand(lumora, context, "lock", "go to the lock screen", call(context, method::lock));
  addCommand(lumora, context, "unlock", "leave the lock screen", call(context, method::home));
  addCommand(lumora, context, "home", "go to the home screen", call(context, method::home));
  auto choice = std::make_shared<std::string>();
  auto* app = addCommand(lumora, context, "app", "open or close an app", [&context, choice] {
    call(context, *choice == "open" ? method::openApp : method::closeApp)();
  });
  addChoice(app, "ACTION", *choice, {"open", "close"}, "what to do");
  auto* screen =
      addCommand(lumora, context, "screen", "switch the display on or off", [&context, choice] {
        call(context, *choice == "on" ? method::displayOn : method::displayOff)();
      });
  addChoice(screen, "STATE", *choice, {"on", "off"}, "new state of the display");
  auto* rotate = addCommand(lumora, context, "rotate", "turn the device", [&context, choice] {
    HostConnection::require(context.device())->rotate(*choice);
  });
  addChoice(rotate, "ORIENTATION", *choice, {"portrait", "left", "right", "upside-down"},
            "new orientation; left and right are the way the device is turned");
}

}  // namespace tool
