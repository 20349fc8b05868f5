#include "platform/key_value_observing.h"

#include <algorithm>
#include <exception>
#include <mutex>
#include <utility>

#include "platform/linux/views/key_value_observing.h"
#include "platform/linux/views/view.h"

namespace platform {
using namespace backend;

namespace {

// The platform's exception class, raised and caught only in this file.
class NSException : public std::exception {
 public:
  const char* what() const noexcept override { return "NSRangeException"; }
};

}  // namespace

bool swallowingNSException(const std::function<void()>& block) {
  try {
    block();
    return true;
  } catch (const NSException&) {
    return false;
  }
}

void UIView::addObserver(const std::shared_ptr<KeyValueObserver>& observer,
                         std::string_view /*keyPath*/, const void* context) {
  std::lock_guard lock(treeMutex());
  impl_->observances.push_back({observer, context});
}

void UIView::removeObserver(const KeyValueObserver& observer, std::string_view /*keyPath*/) {
  std::shared_ptr<KeyValueObserver> removed;
  std::lock_guard lock(treeMutex());
  auto& observances = impl_->observances;
  auto at = std::find_if(observances.rbegin(), observances.rend(), [&observer](const auto& entry) {
    return entry.observer.get() == &observer;
  });
  if (at == observances.rend()) throw NSException();
  removed = std::move(at->observer);
  observances.erase(std::next(at).base());
}

std::shared_ptr<KeyValueObserver> UIView::firstObserver() const {
  const auto observers = observersOf(*this);
  return observers.empty() ? nullptr : observers.front();
}

std::vector<std::shared_ptr<KeyValueObserver>> backend::observersOf(const UIView& view) {
  std::vector<std::shared_ptr<KeyValueObserver>> observers;
  for (const Observance& entry : UIView::Impl::load(view.impl().observances)) {
    observers.push_back(entry.observer);
  }
  return observers;
}

}  // namespace platform
