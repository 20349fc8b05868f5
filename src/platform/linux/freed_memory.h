// What becomes of memory that was freed. Frames come and go by the megabyte, and to take every page
// from the system anew costs more than to fill it.
#pragma once

namespace platform::backend {

// For programs, at their start: freed memory is kept for the next frame.
void keepFreedMemory();

// After work on many frames: what is kept goes back to the system. Any thread.
void giveFreedMemoryBack();

}  // namespace platform::backend
