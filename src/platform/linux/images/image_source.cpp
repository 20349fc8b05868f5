#include "platform/image_source.h"

#include <map>
#include <mutex>
#include <optional>
#include <utility>

#include "platform/linux/files/data.h"
#include "platform/linux/files/file_identity.h"
#include "platform/linux/helper_thread.h"
#include "platform/linux/images/gif/compositor.h"
#include "platform/linux/images/gif/file.h"
#include "platform/linux/images/picture/picture.h"
#include "platform/linux/images/png/reader.h"
#include "platform/linux/out_of_memory.h"

namespace platform {
using namespace backend;

// A GIF, or a PNG as a source of one image. If a GIF is read in order, each frame from the third on
// is made ahead on another thread, while the caller works on the one before it.
struct CGImageSource::Impl {
  DataRef data;
  gif::File file;
  ImageRef single;
  gif::Compositor compositor;
  int lastAskedFor = -1;
  // The frame after the last requested one. Its making uses the compositor until it is ready.
  HelperTask<ImageRef> next;

  Impl(DataRef bytes, gif::File parsed)
      : data(std::move(bytes)), file(std::move(parsed)), compositor(data->impl(), file) {}

  int count() const { return single ? 1 : static_cast<int>(file.images.size()); }

  ImageRef make(int index, bool isInOrder) {
    return unlessOutOfMemory([&] { return compositor.picture(index, isInOrder); });
  }

  ImageRef picture(int index) {
    const bool isInOrder = index == lastAskedFor + 1;
    // Many callers only want the first frame.
    const bool isForAll = isInOrder && index > 0;
    const bool isMade = isInOrder && next.valid();
    ImageRef image = next.valid() ? next.get() : nullptr;
    if (!isMade) image = make(index, isForAll);
    lastAskedFor = index;
    if (isForAll) makeAhead(index + 1);
    return image;
  }

  void makeAhead(int index) {
    // Making a smaller frame takes less time than waking a thread.
    constexpr std::int64_t minPixels = std::int64_t{1} << 16;
    const bool isWorthIt = std::int64_t{file.width} * file.height >= minPixels;
    if (!isWorthIt || index >= static_cast<int>(file.images.size())) return;
    next = startOnHelperThread([this, index] { return make(index, true); });
  }
};

CGImageSource::CGImageSource(std::unique_ptr<Impl> impl) : impl_(std::move(impl)) {}
CGImageSource::~CGImageSource() = default;

std::unique_ptr<CGImageSource> CGImageSource::createWithData(const DataRef& data) {
  auto parsed = unlessOutOfMemory([&data] { return gif::parse(data->impl()); });
  const bool isGif = parsed.has_value();
  auto impl = std::make_unique<Impl>(data, isGif ? std::move(*parsed) : gif::File());
  if (!isGif) {
    impl->single = png::decodePng(*data);
    if (!impl->single) return nullptr;
  }
  return std::unique_ptr<CGImageSource>(new CGImageSource(std::move(impl)));
}

int CGImageSource::count() const {
  return impl_->count();
}

ImageRef CGImageSource::createImageAtIndex(int index) {
  if (index < 0 || index >= impl_->count()) return nullptr;
  if (impl_->single) return impl_->single;
  return impl_->picture(index);
}

std::optional<ImageProperties> CGImageSource::copyPropertiesAtIndex(int index) const {
  if (index < 0 || index >= impl_->count()) return std::nullopt;
  if (impl_->single) return ImageProperties{};
  // As on the device, delayTime replaces delays that are too short for some viewers.
  constexpr double minClampedDelay = 0.02;
  constexpr double clampedDelay = 0.1;
  constexpr double centisecondsPerSecond = 100;
  GIFProperties gif;
  if (auto delay = impl_->file.images[static_cast<std::size_t>(index)].delay) {
    gif.unclampedDelayTime = *delay / centisecondsPerSecond;
    const bool isShort = *gif.unclampedDelayTime < minClampedDelay;
    gif.delayTime = isShort ? clampedDelay : *gif.unclampedDelayTime;
  }
  return ImageProperties{gif};
}

namespace {

// The shapes of the images in files that have been decoded once. Any thread.
class DecodedFiles {
 public:
  static DecodedFiles& all() {
    static auto* files = new DecodedFiles;
    return *files;
  }

  std::optional<PictureShape> find(const FileIdentity& file) const {
    std::lock_guard lock(mutex_);
    const auto found = shapes_.find(file);
    return found == shapes_.end() ? std::nullopt : std::optional(found->second);
  }

  void add(const FileIdentity& file, const PictureShape& shape) {
    // More than the frames of any usual GIF; each takes about 100 bytes.
    constexpr std::size_t maxCount = 1 << 14;
    std::lock_guard lock(mutex_);
    if (shapes_.size() >= maxCount) shapes_.clear();
    shapes_.emplace(file, shape);
  }

 private:
  mutable std::mutex mutex_;
  std::map<FileIdentity, PictureShape> shapes_;
};

ImageRef decodeFile(const DataRef& contents) {
  const auto source = CGImageSource::createWithData(contents);
  return source ? source->createImageAtIndex(0) : nullptr;
}

}  // namespace

// A file that has been decoded before is decoded again only if its pixels are needed.
ImageRef imageWithContentsOfFile(const std::string& path) {
  auto file = openFile(path);
  if (!file) return nullptr;
  const auto identity = identityOf(file->descriptor);
  const DataRef contents = dataOfFile(std::move(*file));
  if (!identity) return decodeFile(contents);
  if (const auto shape = DecodedFiles::all().find(*identity)) {
    return imageOfFile(*shape, identity, [contents] { return decodeFile(contents); });
  }
  ImageRef image = decodeFile(contents);
  if (!image) return nullptr;
  DecodedFiles::all().add(*identity, image->impl().shape);
  return imageOfFile(image->impl().shape, identity, [image] { return image; });
}

}  // namespace platform
