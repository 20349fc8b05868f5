#include "tool/commands/screen_commands.h"

#include <memory>

#include "command_line/failure.h"
#include "host/control/control_names.h"
#include "tool/device/host_connection.h"
#include "tool/support/user_file.h"

namespace tool {

using command_line::Failure;

namespace {

namespace method = host::service::method;

// A viewer that trusts such a name cannot show the file.
void refuseOtherFormats(const std::string& path) {
  for (const char* ending : {".jpg", ".jpeg", ".gif", ".webp", ".bmp"}) {
    if (path.ends_with(ending)) {
      throw Failure("cannot write " + path + ": a screenshot is a PNG file; end its name in .png");
    }
  }
}

void takeScreenshot(const DeviceFolder& device, const std::string& path) {
  refuseOtherFormats(path);
  checkUserFileIsWritable(path);
  writeUserFile(path, HostConnection::require(device)->screenshot());
}

void call(const Context& context, const char* methodName) {
  HostConnection::require(context.device())->call(methodName);
}

void addScreenCommand(CLI::App& lumora, Context& context, const char* name, const char* description,
                      const char* methodName) {
  addCommand(lumora, context, name, description,
             [&context, methodName] { call(context, methodName); });
}

void addScreenshotCommand(CLI::App& lumora, Context& context) {
  auto path = std::make_shared<std::string>();
  auto* command = addCommand(lumora, context, "screenshot", "save a picture of the screen",
                             [&context, path] { takeScreenshot(context.device(), *path); });
  command->add_option("FILE.png", *path, "PNG file to write; - is standard output")->required();
}

}  // namespace

void addScreenCommands(CLI::App& lumora, Context& context) {
  addScreenshotCommand(lumora, context);
  addScreenCommand(lumora, context, "lock", "go to the lock screen", method::lock);
  addScreenCommand(lumora, context, "unlock", "leave the lock screen", method::home);
  addScreenCommand(lumora, context, "home", "go to the home screen", method::home);
  auto choice = std::make_shared<std::string>();
  auto* app = addCommand(lumora, context, "app", "open or close an app", [&context, choice] {
    call(context, *choice == "open" ? method::openApp : method::closeApp);
  });
  addChoice(app, "ACTION", *choice, {"open", "close"}, "open hides the wallpaper, which pauses it");
  auto* screen =
      addCommand(lumora, context, "screen", "switch the display on or off", [&context, choice] {
        call(context, *choice == "on" ? method::displayOn : method::displayOff);
      });
  addChoice(screen, "STATE", *choice, {"on", "off"}, "new state of the display");
  auto* rotate = addCommand(lumora, context, "rotate", "turn the device", [&context, choice] {
    HostConnection::require(context.device())->rotate(*choice);
  });
  addChoice(rotate, "ORIENTATION", *choice, {"portrait", "left", "right", "upside-down"},
            "new orientation; left and right are the way the device is turned");
}

}  // namespace tool
