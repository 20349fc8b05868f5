#include "platform/linux/main_loop/activity.h"

#include <atomic>

namespace platform::backend {
namespace {

std::atomic<int> pendingOperations = 0;
std::atomic<std::uint64_t> activities = 0;

}  // namespace

void beginBackgroundOperation() {
  ++pendingOperations;
  noteActivity();
}

void endBackgroundOperation() {
  --pendingOperations;
}

int pendingBackgroundOperations() {
  return pendingOperations;
}

void noteActivity() {
  ++activities;
}

std::uint64_t activityCount() {
  return activities;
}

}  // namespace platform::backend
