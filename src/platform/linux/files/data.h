// How the backend holds and reads the bytes of NSData.
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "platform/data.h"

namespace platform {

// Where the bytes are. Const functions may be called by several threads at once.
struct NSData::Impl {
  virtual ~Impl() = default;
  virtual std::size_t length() const = 0;
  // The bytes from there on, as many as there are, at most window.size(): in place where they lie
  // in memory, else read into the window. Fewer where the file has been cut short meanwhile.
  virtual std::span<const std::uint8_t> view(std::size_t offset,
                                             std::span<std::uint8_t> window) const = 0;
  // A new file with these bytes; false if it is not whole.
  virtual bool makeFile(int directory, const std::string& name) const = 0;
};

}  // namespace platform

namespace platform::backend {

// Bytes kept alive by an owner and never changed.
struct Piece {
  std::shared_ptr<const void> owner;
  std::span<const std::uint8_t> bytes;
};

// All pieces in their order, where they lie.
DataRef dataOfPieces(std::vector<Piece> pieces);

}  // namespace platform::backend
