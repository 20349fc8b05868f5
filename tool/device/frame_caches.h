// Repairs the frame caches of an earlier run.
#pragma once

namespace tool {

// Deletes incomplete frame caches, so that the home screen makes them again. A cache is incomplete
// if the home screen was killed or the machine lost power while it was made; the library itself
// would use it. Prints a line for each. Returns true if there were any. Requires that no home
// screen is running.
bool removeUnfinishedCaches();

}  // namespace tool
