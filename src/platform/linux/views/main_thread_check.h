// Counts changes of views off the main thread. On a device they sometimes corrupt the display; this
// backend allows them, so mistakes would not be noticed otherwise. Any thread.
#pragma once

namespace platform::backend {

// Counts a call that is not made on the main thread.
void expectMainThread();
// Returns how many calls have been counted.
int timesOffMainThread();

}  // namespace platform::backend
