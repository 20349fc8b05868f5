// The Darwin notifications by which the settings program controls the host side.
#pragma once

#include <string>

namespace lumora {

// Registers for the seven names, for the life of the process. Main thread, at launch.
void observeControlNotifications();

// Turns a name into its action; other names do nothing. All but the intake of a new GIF is handed
// to tweakQueue, so this hardly blocks. On the thread that delivers notifications.
void handleSimpleLumoraMessage(const std::string& name);

}  // namespace lumora
