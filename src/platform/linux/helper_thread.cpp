#include "platform/linux/helper_thread.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <system_error>
#include <thread>
#include <vector>

#include <sched.h>

namespace platform::backend {
namespace {

int countProcessors() {
  cpu_set_t usable;
  const bool isKnown = sched_getaffinity(0, sizeof usable, &usable) == 0;
  return isKnown ? CPU_COUNT(&usable) : static_cast<int>(std::thread::hardware_concurrency());
}

class Helpers {
 public:
  // Never destroyed, because helpers may be running while the process exits.
  static Helpers& all() {
    static auto* helpers = new Helpers;
    return *helpers;
  }

  void add(std::shared_ptr<HelperJob> job) {
    std::lock_guard lock(mutex_);
    const bool isForNewHelper = jobs_.size() >= idle_ && count_ < maxHelpers();
    if (isForNewHelper) startOne();
    if (count_ == 0) return;
    jobs_.push_back(std::move(job));
    if (idle_ > 0) added_.notify_one();
  }

 private:
  void startOne() {
    try {
      std::thread([this] { work(); }).detach();
      ++count_;
    } catch (const std::system_error&) {
      // The others do the work, or whoever wants its result.
    }
  }

  void work() {
    while (const auto job = next()) job->run();
  }

  // Returns nullptr if there is none for a moment. That is longer than the pauses within work on
  // many frames.
  std::shared_ptr<HelperJob> next() {
    constexpr std::chrono::milliseconds moment(100);
    std::unique_lock lock(mutex_);
    ++idle_;
    const bool isAdded = added_.wait_for(lock, moment, [this] { return !jobs_.empty(); });
    --idle_;
    if (!isAdded) {
      --count_;
      return nullptr;
    }
    auto job = std::move(jobs_.front());
    jobs_.pop_front();
    return job;
  }

  std::mutex mutex_;
  std::condition_variable added_;
  // Some of them may have been done by others.
  std::deque<std::shared_ptr<HelperJob>> jobs_;
  int count_ = 0;
  std::size_t idle_ = 0;
};

}  // namespace

int maxHelpers() {
  static const int processors = countProcessors();
  return processors > 1 ? processors : 0;
}

void HelperJob::run() {
  if (const auto work = take()) work();
}

void HelperJob::cancel() {
  take();
}

std::function<void()> HelperJob::take() {
  std::lock_guard lock(mutex_);
  return std::exchange(work_, nullptr);
}

void giveToHelper(std::shared_ptr<HelperJob> job) {
  Helpers::all().add(std::move(job));
}

void inParallel(std::size_t count, std::size_t minForHelper,
                const std::function<void(std::size_t)>& work) {
  std::atomic<std::size_t> next = 0;
  auto workOnSome = [&] {
    for (std::size_t at = next++; at < count; at = next++) work(at);
  };
  const std::size_t threads =
      std::min(static_cast<std::size_t>(maxHelpers()), count / minForHelper);
  std::vector<HelperTask<void>> helpers;
  for (std::size_t each = 1; each < threads; ++each) {
    helpers.push_back(startOnHelperThread(workOnSome));
  }
  workOnSome();
  for (auto& helper : helpers) helper.get();
}

}  // namespace platform::backend
