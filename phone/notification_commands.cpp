#include "phone/notification_commands.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "command_line/event_line.h"
#include "platform/ios/run_loop.h"
#include "platform/notify_center.h"
#include "settings/notification_names.h"

namespace phone {
namespace {

using platform::DarwinNotifyCenter;

// The system tells a program only of names that it asks for.
[[noreturn]] void watch(const std::vector<std::string>& otherNames) {
  std::vector<std::string> names(std::begin(lumora::allNotifications),
                                 std::end(lumora::allNotifications));
  for (const std::string& name : otherNames) {
    if (std::find(names.begin(), names.end(), name) == names.end()) names.push_back(name);
  }
  DarwinNotifyCenter center;
  for (const std::string& name : names) {
    center.addObserver(nullptr, name, [](const std::string& posted) {
      command_line::printEvent(std::chrono::system_clock::now(), posted);
    });
  }
  constexpr double hour = 3600;
  for (;;) platform::backend::runMainLoop(hour);
}

}  // namespace

void addNotificationCommands(CLI::App& lumora, command_line::Context& context) {
  auto name = std::make_shared<std::string>();
  auto* post = addCommand(lumora, context, "post", "post a Darwin notification",
                          [name] { DarwinNotifyCenter::post(*name); });
  post->add_option("NAME", *name, "name, such as com.brightfen.lumora.updateAnimating")->required();
  auto names = std::make_shared<std::vector<std::string>>();
  auto* watching =
      addCommand(lumora, context, "watch",
                 "print each notification of Lumora as it is posted, until interrupted",
                 [names] { watch(*names); });
  watching->add_option("NAME", *names, "other notifications to print, too");
}

}  // namespace phone
