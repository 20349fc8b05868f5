// The Darwin notifications through which the settings program controls the library in the host.
#pragma once

#include <string>

namespace lumora {

// Registers for all control notifications, until the process ends. Main thread, once, at launch.
void observeControlNotifications();

// Performs the action of a control notification; ignores other names. Everything except taking in a
// new GIF is queued on tweakQueue, so this hardly blocks. Called on the thread that delivers
// notifications. Failures are silent.
void handleSimpleLumoraMessage(const std::string& name);

}  // namespace lumora
