// The frame caches that an earlier run has left.
#pragma once

namespace tool {

// Deletes those that are not whole, so that the home screen makes them again: it may have been
// killed while it made them, or the machine may have lost its power. The library itself takes a
// cache for whole as soon as it has been begun. Prints a line for each. Returns whether there were
// any. Not to be called while a home screen is running.
bool removeUnfinishedCaches();

}  // namespace tool
