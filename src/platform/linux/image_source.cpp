#include "platform/image_source.h"

#include <utility>

#include "platform/linux/gif_compositor.h"
#include "platform/linux/gif_file.h"
#include "platform/linux/out_of_memory.h"
#include "platform/linux/png.h"

namespace platform {

// A GIF, or any other picture as a source of one image.
struct CGImageSource::Impl {
  Bytes data;
  gif::File file;
  ImageRef single;
  gif::Compositor compositor{file};
};

CGImageSource::CGImageSource(std::unique_ptr<Impl> impl) : impl_(std::move(impl)) {}
CGImageSource::~CGImageSource() = default;

std::unique_ptr<CGImageSource> CGImageSource::createWithData(Bytes data) {
  auto impl = std::make_unique<Impl>();
  impl->data = std::move(data);
  if (auto file = unlessOutOfMemory([&impl] { return gif::parse(impl->data); })) {
    impl->file = std::move(*file);
  } else {
    impl->single = decodePng(impl->data);
    if (!impl->single) return nullptr;
  }
  return std::unique_ptr<CGImageSource>(new CGImageSource(std::move(impl)));
}

int CGImageSource::count() const {
  return impl_->single ? 1 : static_cast<int>(impl_->file.images.size());
}

ImageRef CGImageSource::createImageAtIndex(int index) {
  if (index < 0 || index >= count()) return nullptr;
  if (impl_->single) return impl_->single;
  return unlessOutOfMemory([this, index] { return impl_->compositor.picture(index); });
}

std::optional<ImageProperties> CGImageSource::copyPropertiesAtIndex(int index) const {
  if (index < 0 || index >= count()) return std::nullopt;
  if (impl_->single) return ImageProperties{};
  // As on the device, the clamped delay is for viewers that do not bear very short ones.
  constexpr double shortestClampedDelay = 0.02;
  constexpr double clampedDelay = 0.1;
  constexpr double centisecondsPerSecond = 100;
  GIFProperties gif;
  if (auto delay = impl_->file.images[static_cast<std::size_t>(index)].delay) {
    gif.unclampedDelayTime = *delay / centisecondsPerSecond;
    const bool isShort = *gif.unclampedDelayTime < shortestClampedDelay;
    gif.delayTime = isShort ? clampedDelay : *gif.unclampedDelayTime;
  }
  return ImageProperties{gif};
}

}  // namespace platform
