#include "platform/linux/images/png/deflate.h"

#include <memory>
#include <new>

#include <isa-l/crc.h>
#include <isa-l/igzip_lib.h>

namespace platform::backend::png {
namespace {

// Level 1 gives a tenth fewer bytes than level 0, and is as fast as memory on uniform areas.
constexpr unsigned level = 1;
constexpr unsigned levelBufferSize = ISAL_DEF_LVL1_DEFAULT;

struct Deflater {
  // The library's initializer does not set all of its fields.
  isal_zstream stream{};
  std::uint8_t levelBuffer[levelBufferSize];
  // Room for the largest possible result, kept from piece to piece.
  std::unique_ptr<std::uint8_t[]> room;
  std::size_t roomSize = 0;
};

// Each thread keeps one of both, because they are large and used for every strip of every frame.
// The analyzer mistakes an object with thread storage for one that has been deleted.
Deflater& threadsDeflater() {
  thread_local const std::unique_ptr<Deflater> deflater(new Deflater);
  return *deflater;  // NOLINT(clang-analyzer-cplusplus.NewDelete)
}

inflate_state& threadsInflater() {
  thread_local const std::unique_ptr<inflate_state> inflater(new inflate_state);
  return *inflater;  // NOLINT(clang-analyzer-cplusplus.NewDelete)
}

// Bytes that cannot be compressed are stored, in blocks of at most 65535.
std::size_t maxDeflatedBytes(std::size_t rawSize) {
  constexpr std::size_t storedBlock = 65535;
  constexpr std::size_t storedHeader = 5;
  constexpr std::size_t spare = 512;
  return rawSize + (rawSize / storedBlock + 1) * storedHeader + spare;
}

// ISA-L's pointers to its input are not const.
std::uint8_t* pointer(std::span<const std::uint8_t> bytes) {
  return const_cast<std::uint8_t*>(bytes.data());
}

}  // namespace

Bytes deflatePiece(std::span<const std::uint8_t> raw) {
  Deflater& deflater = threadsDeflater();
  if (const std::size_t needed = maxDeflatedBytes(raw.size()); needed > deflater.roomSize) {
    deflater.roomSize = 0;
    deflater.room.reset(new std::uint8_t[needed]);
    deflater.roomSize = needed;
  }
  isal_zstream& stream = deflater.stream;
  isal_deflate_stateless_init(&stream);
  stream.level = level;
  stream.level_buf = deflater.levelBuffer;
  stream.level_buf_size = levelBufferSize;
  stream.flush = FULL_FLUSH;
  stream.end_of_stream = 0;
  stream.next_in = pointer(raw);
  stream.avail_in = static_cast<std::uint32_t>(raw.size());
  stream.next_out = deflater.room.get();
  stream.avail_out = static_cast<std::uint32_t>(deflater.roomSize);
  // It can only fail if there is not enough room.
  if (isal_deflate_stateless(&stream) != COMP_OK) throw std::bad_alloc();
  return {deflater.room.get(), deflater.room.get() + stream.total_out};
}

bool inflatePiece(std::span<const std::uint8_t> deflated, std::span<std::uint8_t> room) {
  inflate_state& state = threadsInflater();
  isal_inflate_init(&state);
  state.next_in = pointer(deflated);
  state.avail_in = static_cast<std::uint32_t>(deflated.size());
  state.next_out = room.data();
  state.avail_out = static_cast<std::uint32_t>(room.size());
  // A piece has no final block, so it is complete at the end of the input.
  return isal_inflate_stateless(&state) == ISAL_END_INPUT && state.total_out == room.size();
}

std::uint32_t adler32Of(std::span<const std::uint8_t> bytes) {
  return isal_adler32(1, bytes.data(), bytes.size());
}

std::uint32_t crc32Of(std::span<const std::uint8_t> bytes) {
  return continueCrc32(0, bytes);
}

std::uint32_t continueCrc32(std::uint32_t crc, std::span<const std::uint8_t> bytes) {
  return crc32_gzip_refl(crc, bytes.data(), bytes.size());
}

}  // namespace platform::backend::png
