// Keeps freed memory for reuse. Frames take megabytes for a short time, and getting each page from
// the system again costs more than filling it.
#pragma once

namespace platform::backend {

// Makes the allocator keep freed memory, if it supports this. Called by programs when they start,
// before other threads.
void keepFreedMemory();

// Returns the kept memory to the system; does nothing unless keepFreedMemory had an effect. Called
// after work on many frames, on any thread.
void giveFreedMemoryBack();

}  // namespace platform::backend
