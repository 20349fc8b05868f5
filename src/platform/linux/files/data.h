// Stores and reads the bytes of NSData on this backend.
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "platform/data.h"
#include "platform/linux/files/file_contents.h"

namespace platform {

// A source of bytes. Several threads may use it at the same time.
struct NSData::Impl {
  virtual ~Impl() = default;
  virtual std::size_t length() const = 0;
  // Returns the bytes from offset on, at most window.size() of them: in place if they are in
  // memory, otherwise read into the window. Returns fewer at the end of the bytes, which is earlier
  // than length() if the file has been truncated.
  virtual std::span<const std::uint8_t> view(std::size_t offset,
                                             std::span<std::uint8_t> window) const = 0;
  // Creates a file with these bytes. Returns false if it could not be created or is incomplete.
  virtual bool makeFile(int directory, const std::string& name) const = 0;
};

}  // namespace platform

namespace platform::backend {

// Bytes kept alive by an owner and never changed.
struct Piece {
  std::shared_ptr<const void> owner;
  std::span<const std::uint8_t> bytes;
};

// Returns the pieces, in their order, as one object that shares their ownership.
DataRef dataOfPieces(std::vector<Piece> pieces);

// Returns data whose bytes are read from the file when needed; never nullptr. If the file is
// changed in place, so are the bytes.
DataRef dataOfFile(OpenFile file);

}  // namespace platform::backend
