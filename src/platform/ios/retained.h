// Retains an Objective-C object as long as it holds it, without ARC; it may hold nil. Objective-C++
// only.
#pragma once

#include <utility>

namespace platform {

template <typename Object>
class Retained {
 public:
  Retained() = default;
  explicit Retained(Object* object) : object_([object retain]) {}
  // Takes over the caller's reference, such as that of alloc or copy.
  static Retained adopt(Object* object) {
    Retained retained;
    retained.object_ = object;
    return retained;
  }
  Retained(const Retained& other) : Retained(other.object_) {}
  Retained(Retained&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  Retained& operator=(Retained other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~Retained() { [object_ release]; }

  Object* get() const { return object_; }

 private:
  Object* object_ = nullptr;
};

}  // namespace platform
