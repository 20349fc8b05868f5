#include "gifview/frame_cache.h"

#include <memory>

#include "platform/file_manager.h"
#include "platform/property_list.h"
#include "platform/string_value.h"

namespace lumora {

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

void prepareFrameCache(const FrameCacheLayout& layout) {
  platform::removeItemAtPath(layout.GIFDirectory);
  platform::createDirectoryAtPath(layout.GIFDirectory);
  platform::copyItemAtPath(layout.fullGIFPath, layout.savedGIFPath);
}

void writeFrame(const FrameCacheLayout& layout, std::int32_t index,
                const platform::ImageRef& image) {
  if (!image) return;
  const auto png = platform::UIImagePNGRepresentation(*image);
  if (png) png->writeToFileAtomically(layout.framePath(index));
}

void writeFrameDurations(const FrameCacheLayout& layout, const std::vector<double>& durations) {
  std::vector<std::string> texts;
  texts.reserve(durations.size());
  for (const double duration : durations) texts.push_back(platform::decimalText(duration));
  platform::writeArrayToFile(texts, layout.durationsPath());
}

FrameDurations loadFrameDurations(const FrameCacheLayout& layout) {
  const auto texts = platform::arrayWithContentsOfFile(layout.durationsPath());
  if (!texts) return nullptr;
  auto durations = std::make_shared<std::vector<double>>();
  for (const std::string& text : *texts) durations->push_back(platform::doubleValue(text));
  return durations;
}

}  // namespace lumora
