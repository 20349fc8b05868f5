// An import that is completed even if the command is interrupted.
#pragma once

#include "command_line/progress_bar.h"
#include "tool/device/wallpaper_import.h"

namespace tool {

// Handover: the home screen has the GIF. Frames: they are all made.
enum class WaitFor { Handover, Frames };

// Runs importWallpaper in a child process. Once that has begun to change the device, it finishes
// even if the limit passes, this process is interrupted, or the terminal is closed. Shows the
// progress and returns when what it waits for is reached. Throws Failure if the import fails or the
// limit passes; the message describes the state of the wallpaper. On SIGINT, SIGTERM or SIGHUP,
// prints that state and ends this process by the signal. Requires that this process has no other
// threads.
void importInOwnProcess(const DeviceFolder& device, const Import& import, WaitFor end,
                        command_line::ProgressStyle style = command_line::ProgressStyle::Bar);

}  // namespace tool
