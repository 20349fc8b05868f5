// A value that several threads read and replace whole. The design accepts that a reader sees the
// old or the new one; this only makes sure that it sees either.
#pragma once

#include <mutex>
#include <utility>

namespace lumora {

template <typename Value>
class Guarded {
 public:
  Guarded() = default;
  explicit Guarded(Value value) : value_(std::move(value)) {}

  Value load() const {
    std::lock_guard lock(mutex_);
    return value_;
  }

  void store(Value value) { exchange(std::move(value)); }

  // The old value, whose end the caller decides, outside the lock.
  Value exchange(Value value) {
    std::lock_guard lock(mutex_);
    std::swap(value_, value);
    return value;
  }

 private:
  mutable std::mutex mutex_;
  Value value_{};
};

}  // namespace lumora
