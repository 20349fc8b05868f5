#include "platform/linux/files/byte_reader.h"

#include <algorithm>

namespace platform::backend {

bool ByteReader::refill() {
  rest_ = data_.view(next_, window_);
  next_ += rest_.size();
  if (rest_.empty()) ended_ = true;
  return !rest_.empty();
}

std::size_t ByteReader::read(std::span<std::uint8_t> target) {
  std::size_t done = 0;
  while (done < target.size() && (!rest_.empty() || refill())) {
    const std::size_t count = std::min(rest_.size(), target.size() - done);
    std::copy_n(rest_.begin(), count, target.begin() + static_cast<std::ptrdiff_t>(done));
    rest_ = rest_.subspan(count);
    done += count;
  }
  return done;
}

void ByteReader::skip(std::size_t count) {
  const std::size_t inWindow = std::min(count, rest_.size());
  rest_ = rest_.subspan(inWindow);
  next_ += count - inWindow;
}

}  // namespace platform::backend
