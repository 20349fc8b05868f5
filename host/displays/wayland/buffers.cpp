#include "host/displays/wayland/buffers.h"

#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <string>

#include <sys/mman.h>
#include <unistd.h>

#include "platform/linux/files/file_descriptor.h"
#include "platform/linux/main_loop/run_loop.h"

namespace host::wayland {
namespace {

[[noreturn]] void fail() {
  throw std::runtime_error(std::string("cannot share memory with the compositor: ") +
                           std::strerror(errno));
}

// Drawing may have waited for the buffer.
void noteRelease(void* data, wl_buffer* /*buffer*/) {
  static_cast<Buffers::OneBuffer*>(data)->isBusy = false;
  platform::backend::RunLoop::main().setNeedsPartialDisplay();
}

constexpr wl_buffer_listener bufferListener = {.release = noteRelease};

using Pool = std::unique_ptr<wl_shm_pool, Destroy>;

}  // namespace

Buffers::Buffers(wl_shm* memory, int width, int height) : width_(width), height_(height) {
  const int stride = cairo_format_stride_for_width(CAIRO_FORMAT_RGB24, width);
  const std::size_t bufferSize =
      static_cast<std::size_t>(stride) * static_cast<std::size_t>(height);
  size_ = bufferSize * buffers_.size();
  const platform::backend::FileDescriptor file(memfd_create("buffers", MFD_CLOEXEC));
  if (!file || ftruncate(file.get(), static_cast<off_t>(size_)) != 0) fail();
  bytes_ = mmap(nullptr, size_, PROT_READ | PROT_WRITE, MAP_SHARED, file.get(), 0);
  if (bytes_ == MAP_FAILED) fail();
  const Pool pool(wl_shm_create_pool(memory, file.get(), static_cast<int>(size_)));
  std::size_t offset = 0;
  for (OneBuffer& buffer : buffers_) {
    buffer.object.reset(wl_shm_pool_create_buffer(pool.get(), static_cast<int>(offset), width,
                                                  height, stride, WL_SHM_FORMAT_XRGB8888));
    wl_buffer_add_listener(buffer.object.get(), &bufferListener, &buffer);
    buffer.surface.reset(cairo_image_surface_create_for_data(
        static_cast<unsigned char*>(bytes_) + offset, CAIRO_FORMAT_RGB24, width, height, stride));
    buffer.stale = platform::backend::Region({0, 0, width, height});
    offset += bufferSize;
  }
}

Buffers::~Buffers() {
  for (OneBuffer& buffer : buffers_) {
    buffer.surface.reset();
    buffer.object.reset();
  }
  munmap(bytes_, size_);
}

void Buffers::addStale(const platform::backend::Region& part) {
  for (OneBuffer& buffer : buffers_) buffer.stale.add(part);
}

Buffers::OneBuffer* Buffers::free() {
  for (OneBuffer& buffer : buffers_) {
    if (!buffer.isBusy) return &buffer;
  }
  return nullptr;
}

}  // namespace host::wayland
