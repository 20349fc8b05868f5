// The frame caches that an earlier run has left.
#pragma once

namespace tool {

// Deletes those that are not whole, so that the home screen makes them anew: it may have been
// killed while it was at it, or the machine may have lost its power. The library itself takes a
// cache for whole as soon as it has been begun. Says so, a line each. Not while a home screen is
// running.
void removeUnfinishedCaches();

}  // namespace tool
