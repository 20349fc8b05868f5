// Decodes the images of a GIF one after the other, and some of them ahead, on helper threads. They
// do not depend on each other; only drawing them does. One thread at a time.
#pragma once

#include <vector>

#include "platform/linux/files/data.h"
#include "platform/linux/helper_thread.h"
#include "platform/linux/images/gif/file.h"
#include "platform/linux/images/gif/lzw.h"

namespace platform::backend::gif {

class DecodedImages {
 public:
  // Both must outlive this object.
  DecodedImages(const NSData::Impl& data, const File& file) : data_(data), file_(file) {}

  // Returns the indices of the image's complete rows, in the order of the file; see decodeImage.
  // They are valid until the next call. If isInOrder, the next images will be wanted, too: they are
  // decoded ahead. Throws std::bad_alloc.
  std::span<const std::uint8_t> indicesOf(int index, bool isInOrder);

  // Forgets what was decoded ahead and frees its memory.
  void clear() { slots_.clear(); }

 private:
  static constexpr int none = -1;

  // An image is always in the slot that is its index modulo the number of slots.
  struct Slot {
    int index = none;
    IndexBuffer buffer;
    // The number of complete rows.
    HelperTask<int> rows;
  };

  Slot& slotFor(int index);
  void decodeAhead(int index);
  int decode(const SubImage& image, IndexBuffer& buffer) const {
    return decodeImage(data_, image, buffer);
  }

  const NSData::Impl& data_;
  const File& file_;
  std::vector<Slot> slots_;
};

}  // namespace platform::backend::gif
