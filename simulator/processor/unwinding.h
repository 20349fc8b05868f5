// Unwinds an exception of the host through the library's code to its handler, as the device's
// run-times do: with tables on 64-bit processors, with a list of registered frames on 32-bit ones.
#pragma once

#include "mach_o_image.h"

// Sets the library whose code contains the handlers. It must exist as long as exceptions are
// raised.
void setUnwoundImage(const MachOImage& image);

// Returns the function through which the library sends messages. It calls sendMessage and, on
// 64-bit processors, saves the caller's registers for unwinding.
void* messageEntry();
// Return the functions with which the library continues unwinding after a clean-up and, on 32-bit
// processors, registers and unregisters its frames.
void* resumeEntry();
void* registerFrameEntry();
void* unregisterFrameEntry();

// Receives all messages that the library sends. The host defines it.
extern "C" const void* sendMessage(const void* receiver, const char* selector, const void* first,
                                   const void* second, const void* third, const void* fourth);

// Raises an exception from the message that is being sent. Ends the process if the library does not
// catch it.
[[noreturn]] void raiseException();
