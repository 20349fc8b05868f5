// Values that several threads read and replace as a whole. Readers may get the old value or the new
// one, but never a mixture.
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

  // Stores a new value and returns the old one, so that the caller can destroy it outside the lock.
  Value exchange(Value value) {
    std::lock_guard lock(mutex_);
    std::swap(value_, value);
    return value;
  }

 private:
  mutable std::mutex mutex_;
  Value value_{};
};

// A guarded value for a global variable. It is created at its first use, so that the library needs
// no initializer for it, and never destroyed, because blocks may use it while the process exits.
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
    // Another thread may have created it in the meantime.
    return guarded_.compare_exchange_strong(made, own.get()) ? *own.release() : *made;
  }

  mutable std::atomic<Guarded<Value>*> guarded_ = nullptr;
};

}  // namespace lumora
