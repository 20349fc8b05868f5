// A value that several threads read and replace whole. The design accepts that a reader sees the
// old or the new one; this only makes sure that it sees either.
#pragma once

#include <atomic>
#include <memory>
#include <mutex>
#include <utility>

namespace lumora {

template <typename Value>
class Guarded {
 public:
  constexpr Guarded() = default;

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

// One that the whole process shares. It is made at its first use, so the library needs no
// initializer for it, and it is never destroyed: late blocks may use it while the process ends.
template <typename Value>
class GuardedGlobal {
 public:
  constexpr GuardedGlobal() = default;
  GuardedGlobal(const GuardedGlobal&) = delete;
  GuardedGlobal& operator=(const GuardedGlobal&) = delete;

  Value load() const { return guarded().load(); }
  void store(Value value) { guarded().store(std::move(value)); }

 private:
  Guarded<Value>& guarded() const {
    Guarded<Value>* made = guarded_.load();
    if (made != nullptr) return *made;
    auto own = std::make_unique<Guarded<Value>>();
    // Another thread may have been faster.
    return guarded_.compare_exchange_strong(made, own.get()) ? *own.release() : *made;
  }

  mutable std::atomic<Guarded<Value>*> guarded_ = nullptr;
};

}  // namespace lumora
