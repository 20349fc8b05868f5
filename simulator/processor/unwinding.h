// How an exception of the host finds its handler in the library's code, and cleans up on the way,
// as the device's run-times do it: by tables on 64-bit processors, by a chain of registered frames
// on 32-bit ones.
#pragma once

#include "mach_o_image.h"

// The library in whose code handlers are looked for.
void setUnwoundImage(const MachOImage& image);

// What the library is given for its messages: it leads to sendMessage, and remembers the caller's
// registers where they are needed to unwind.
void* messageEntry();
// What the library is given to go on after it has cleaned up, and, on 32-bit processors, to
// register and unregister its frames.
void* resumeEntry();
void* registerFrameEntry();
void* unregisterFrameEntry();

// Of the host: whatever the library sends comes here.
extern "C" const void* sendMessage(const void* receiver, const char* selector, const void* first,
                                   const void* second, const void* third, const void* fourth);

// Raises an exception out of the message being sent. It must be caught in the library's code.
[[noreturn]] void raiseException();
