#include "gifview/frame_cache.h"

#include <vector>

#include "gifview/blur.h"
#include "gifview/gif_frame_delay.h"
#include "platform/autorelease_pool.h"
#include "platform/file_manager.h"
#include "platform/property_list.h"
#include "platform/string_value.h"

namespace lumora {
namespace {

using platform::CGImageSource;
using platform::ImageRef;

void prepareDirectory(const FrameCacheLayout& layout) {
  platform::removeItemAtPath(layout.GIFDirectory);
  platform::createDirectoryAtPath(layout.GIFDirectory);
  platform::copyItemAtPath(layout.fullGIFPath, layout.savedGIFPath);
}

void extractFrame(const FrameCacheLayout& layout, CGImageSource& source, std::int32_t index,
                  FrameExtractionClient& client, std::vector<std::string>& durations) {
  const platform::NSAutoreleasePool pool;
  ImageRef image = source.createImageAtIndex(index);
  if (!image) return;
  client.frameFound();
  durations.push_back(platform::decimalText(CGImageSourceGetGifFrameDelay(source, index)));
  const float blur = client.blur();
  if (blur > 0) image = blurImageWithRadius(image, blurRadius(blur));
  writeFrame(layout, index, image);
}

}  // namespace

FrameCacheLayout::FrameCacheLayout(const std::string& gifPath)
    : fullGIFPath(gifPath),
      GIFDirectory(platform::stringByDeletingPathExtension(gifPath)),
      baseGIFName(platform::lastPathComponent(GIFDirectory)),
      savedGIFPath(GIFDirectory + "/" + baseGIFName) {}

std::string FrameCacheLayout::framePath(std::int32_t index) const {
  return savedGIFPath + "_" + std::to_string(index) + ".png";
}

std::string FrameCacheLayout::durationsPath() const {
  return savedGIFPath + "_durations.plist";
}

bool isFrameCacheValid(const FrameCacheLayout& layout, const platform::NSData& gif) {
  const auto saved = platform::NSData::dataWithContentsOfFile(layout.savedGIFPath);
  return saved && saved->isEqualToData(gif);
}

void rebuildFrameCache(const FrameCacheLayout& layout, const platform::DataRef& gif,
                       FrameExtractionClient& client) {
  prepareDirectory(layout);
  auto source = CGImageSource::createWithData(gif);
  if (!source) return;
  client.setFrameCount(source->count());
  std::vector<std::string> durations;
  for (std::int32_t index = 0; index < client.frameCount(); ++index) {
    extractFrame(layout, *source, index, client, durations);
  }
  platform::writeArrayToFile(durations, layout.durationsPath());
}

void writeFrame(const FrameCacheLayout& layout, std::int32_t index,
                const platform::ImageRef& image) {
  if (!image) return;
  const auto png = platform::UIImagePNGRepresentation(*image);
  if (png) png->writeToFileAtomically(layout.framePath(index));
}

FrameDurations loadFrameDurations(const FrameCacheLayout& layout) {
  const auto texts = platform::arrayWithContentsOfFile(layout.durationsPath());
  if (!texts) return nullptr;
  auto durations = std::make_shared<std::vector<double>>();
  for (const std::string& text : *texts) durations->push_back(platform::doubleValue(text));
  return durations;
}

}  // namespace lumora
