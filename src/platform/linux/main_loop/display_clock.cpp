#include "platform/linux/main_loop/display_clock.h"

#include <algorithm>

namespace platform::backend {

DisplayClock& DisplayClock::main() {
  static auto* instance = new DisplayClock;
  return *instance;
}

void DisplayClock::setRefreshRate(int hertz) {
  hertz_ = hertz;
}

void DisplayClock::setManual() {
  manual_ = true;
  refreshes_ = 0;
}

void DisplayClock::add(std::shared_ptr<Link> link) {
  const auto now = std::chrono::steady_clock::now();
  catchUp(now);
  endSkipping();
  // Refreshes that passed without any links do not count as missed ones.
  if (!manual_ && !hasLinks()) refreshes_ = refreshesUntil(now);
  std::lock_guard lock(mutex_);
  links_.push_back(std::move(link));
}

void DisplayClock::remove(const Link& link) {
  std::shared_ptr<Link> removed;
  std::lock_guard lock(mutex_);
  auto at = std::find_if(links_.begin(), links_.end(),
                         [&link](const auto& entry) { return entry.get() == &link; });
  if (at == links_.end()) return;
  removed = std::move(*at);
  links_.erase(at);
}

std::chrono::nanoseconds DisplayClock::timeOfRefresh(std::int64_t index) const {
  return std::chrono::nanoseconds((index * std::nano::den + hertz_ - 1) / hertz_);
}

std::int64_t DisplayClock::refreshesUntil(TimePoint now) const {
  return std::chrono::nanoseconds(now - start_).count() * hertz_ / std::nano::den;
}

bool DisplayClock::hasLinks() const {
  std::lock_guard lock(mutex_);
  return !links_.empty();
}

std::optional<DisplayClock::TimePoint> DisplayClock::nextRefresh() const {
  if (manual_ || !hasLinks()) return std::nullopt;
  return start_ + timeOfRefresh(refreshes_ + 1 + skippable());
}

bool DisplayClock::refreshIfDue(TimePoint now) {
  if (manual_ || !hasLinks()) return false;
  const std::int64_t passed = refreshesUntil(now);
  const int skipped = skippable();
  if (passed <= refreshes_ + skipped) return false;
  refreshes_ = passed;
  refreshLinks(skipped + 1);
  return true;
}

void DisplayClock::catchUp(TimePoint now) {
  const int skipped = skippable();
  if (skipped == 0) return;
  const std::int64_t passed = std::min(refreshesUntil(now) - refreshes_, std::int64_t{skipped});
  if (passed <= 0) return;
  refreshes_ += passed;
  refreshLinks(static_cast<int>(passed));
}

void DisplayClock::endSkipping() {
  std::lock_guard lock(mutex_);
  for (const auto& link : links_) link->endSkipping();
}

int DisplayClock::skippable() const {
  std::lock_guard lock(mutex_);
  return !manual_ && links_.size() == 1 ? links_.front()->skippable() : 0;
}

bool DisplayClock::advance(std::chrono::nanoseconds span, const std::function<bool()>& afterEach) {
  const std::chrono::nanoseconds end = manualTime_ + span;
  while (timeOfRefresh(refreshes_ + 1) <= end) {
    manualTime_ = timeOfRefresh(++refreshes_);
    refreshLinks(1);
    if (!afterEach()) return false;
  }
  manualTime_ = end;
  return true;
}

void DisplayClock::refreshLinks(int passed) {
  std::vector<std::shared_ptr<Link>> links;
  {
    std::lock_guard lock(mutex_);
    links = links_;
  }
  for (const auto& link : links) link->refresh(passed);
}

}  // namespace platform::backend
