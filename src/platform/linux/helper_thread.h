// A part of some work on a second thread.
#pragma once

#include <exception>
#include <future>

namespace platform::backend {

// Starts the work on a thread of its own; if the system has none to give, the caller of get() does
// it there. get() rethrows what the work threw. Dropping the result waits for a running thread.
template <typename Work>
auto startOnHelperThread(Work work) {
  try {
    return std::async(std::launch::async, work);
  } catch (const std::exception&) {
    return std::async(std::launch::deferred, work);
  }
}

}  // namespace platform::backend
