// Runs part of a computation on a second thread.
#pragma once

#include <exception>
#include <future>

namespace platform::backend {

// Starts the work on a new thread and returns the future of its result. If no thread can be
// started, get() does the work. get() rethrows what the work threw. Destroying the future waits for
// the thread.
template <typename Work>
auto startOnHelperThread(Work work) {
  try {
    return std::async(std::launch::async, work);
  } catch (const std::exception&) {
    return std::async(std::launch::deferred, work);
  }
}

}  // namespace platform::backend
