// Runs parts of a computation on helper threads. There are as many as this process may use
// processors, and none if that is one. A helper that has had nothing to do for a moment ends.
#pragma once

#include <cstddef>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <type_traits>
#include <utility>

namespace platform::backend {

// Returns the number of helpers that can run at the same time.
int maxHelpers();

// Work that is done once, by whoever begins first. Any thread.
class HelperJob {
 public:
  explicit HelperJob(std::function<void()> work) : work_(std::move(work)) {}

  // Does the work, unless it has begun.
  void run();
  // Lets nobody begin the work. Does nothing if it has begun.
  void cancel();

 private:
  std::function<void()> take();

  std::mutex mutex_;
  std::function<void()> work_;
};

// Has a helper do the job as soon as one is free, or never if no thread can be started.
void giveToHelper(std::shared_ptr<HelperJob> job);

// The result of work that was given to a helper. One thread at a time.
template <typename Result>
class HelperTask {
 public:
  HelperTask() = default;
  template <typename Work>
  explicit HelperTask(Work work) {
    auto task = std::make_shared<std::packaged_task<Result()>>(std::move(work));
    result_ = task->get_future();
    job_ = std::make_shared<HelperJob>([task] { (*task)(); });
    giveToHelper(job_);
  }
  // Waits for the work if it has begun, and cancels it otherwise.
  ~HelperTask() { finish(); }
  HelperTask(HelperTask&& other) noexcept = default;
  HelperTask& operator=(HelperTask&& other) noexcept {
    finish();
    job_ = std::move(other.job_);
    result_ = std::move(other.result_);
    return *this;
  }

  // Returns true if there is a result to get.
  bool valid() const { return result_.valid(); }

  // Returns the result, once. Does the work itself if no helper has begun it. Rethrows what the
  // work threw.
  Result get() {
    job_->run();
    return result_.get();
  }

 private:
  void finish() {
    if (!valid()) return;
    job_->cancel();
    // A canceled task breaks its promise, which ends the wait, too.
    result_.wait();
  }

  std::shared_ptr<HelperJob> job_;
  std::future<Result> result_;
};

template <typename Work>
auto startOnHelperThread(Work work) {
  return HelperTask<std::invoke_result_t<Work&>>(std::move(work));
}

// Calls work with every index below count, in any order, on this thread and on as many helpers as
// have at least minForHelper of them. Returns when all is done. Rethrows what work throws.
void inParallel(std::size_t count, std::size_t minForHelper,
                const std::function<void(std::size_t)>& work);

}  // namespace platform::backend
