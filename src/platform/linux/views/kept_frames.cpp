#include "platform/linux/views/kept_frames.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <functional>
#include <string_view>
#include <utility>

#include <lz4.h>

namespace platform::backend {
namespace {

constexpr int screenPixelSize = 4;

// With small tiles, a small change affects little; large ones compress better.
constexpr int tileWidth = 128;
constexpr int tileHeight = 32;
constexpr int maxTileSize = tileWidth * tileHeight * screenPixelSize;

// About what a map takes for each element beside its contents.
constexpr std::size_t sizeOfNode = 128;

char* pixelAt(cairo_surface_t* surface, int x, int y) {
  return reinterpret_cast<char*>(cairo_image_surface_get_data(surface)) +
         static_cast<std::ptrdiff_t>(y) * cairo_image_surface_get_stride(surface) +
         static_cast<std::ptrdiff_t>(x) * screenPixelSize;
}

}  // namespace

void KeptFrames::start(cairo_surface_t* surface) {
  clear();
  const int width = cairo_image_surface_get_width(surface);
  const int height = cairo_image_surface_get_height(surface);
  places_.clear();
  for (int y = 0; y < height; y += tileHeight) {
    for (int x = 0; x < width; x += tileWidth) {
      places_.push_back({x, y, std::min(tileWidth, width - x), std::min(tileHeight, height - y)});
    }
  }
  pixels_.resize(maxTileSize);
  compressed_.resize(static_cast<std::size_t>(LZ4_compressBound(maxTileSize)));
  width_ = width;
  height_ = height;
}

void KeptFrames::clear() {
  frames_.clear();
  tiles_.clear();
  size_ = 0;
  isFull_ = false;
  missed_.reset();
  missedCount_ = 0;
}

void KeptFrames::forget(const Region& part) {
  for (std::size_t index = 0; index < places_.size(); ++index) {
    if (!part.overlaps(places_[index])) continue;
    for (auto& [file, tiles] : frames_) tiles[index].reset();
  }
  std::erase_if(tiles_, [this](const auto& known) {
    const bool isUnused = known.second.use_count() == 1;
    if (isUnused) size_ -= known.second->size() + sizeOfNode;
    return isUnused;
  });
}

Region KeptFrames::forgotten(const FileIdentity& frame, const Region& part) const {
  const Tiles& tiles = frames_.at(frame);
  Region found;
  for (std::size_t index = 0; index < tiles.size(); ++index) {
    if (!tiles[index] && part.overlaps(places_[index])) found.add(places_[index]);
  }
  return found;
}

bool KeptFrames::fits(cairo_surface_t* surface) const {
  return cairo_image_surface_get_width(surface) == width_ &&
         cairo_image_surface_get_height(surface) == height_;
}

Region KeptFrames::difference(const FileIdentity& one, const FileIdentity& other) const {
  const Tiles& before = frames_.at(one);
  const Tiles& after = frames_.at(other);
  Region different;
  for (std::size_t index = 0; index < after.size(); ++index) {
    if (before[index] != after[index] || !after[index]) different.add(places_[index]);
  }
  return different;
}

void KeptFrames::draw(const FileIdentity& frame, cairo_surface_t* surface, const Region& part) {
  missed_.reset();
  missedCount_ = 0;
  cairo_surface_flush(surface);
  const Tiles& tiles = frames_.at(frame);
  for (std::size_t index = 0; index < tiles.size(); ++index) {
    if (tiles[index] && part.overlaps(places_[index])) {
      drawTile(*tiles[index], surface, places_[index]);
    }
  }
  cairo_surface_mark_dirty(surface);
}

void KeptFrames::drawTile(const Tile& tile, cairo_surface_t* surface,
                          const cairo_rectangle_int_t& pixels) {
  LZ4_decompress_safe(tile.data(), pixels_.data(), static_cast<int>(tile.size()), maxTileSize);
  const std::size_t length = static_cast<std::size_t>(pixels.width) * screenPixelSize;
  const char* source = pixels_.data();
  for (int row = 0; row < pixels.height; ++row, source += length) {
    std::memcpy(pixelAt(surface, pixels.x, pixels.y + row), source, length);
  }
}

// If a frame that was not kept comes again before any that is, the kept ones are out of use.
bool KeptFrames::mayKeep(const FileIdentity& frame) {
  if (has(frame)) return false;
  if (!isFull_) return true;
  if (missed_ == frame) {
    clear();
    return true;
  }
  // Finds the repetition of any number of frames, even after others that do not come again.
  if (std::has_single_bit(++missedCount_)) missed_ = frame;
  return false;
}

void KeptFrames::keep(const FileIdentity& frame, cairo_surface_t* surface,
                      const std::optional<Before>& before) {
  if (budget_ == 0) return;
  if (!fits(surface)) start(surface);
  if (!mayKeep(frame)) return;
  cairo_surface_flush(surface);
  const auto old = before ? frames_.find(before->frame) : frames_.end();
  const std::size_t sizeOfLists = places_.size() * sizeof(Tiles::value_type) + sizeOfNode;
  Tiles tiles;
  tiles.reserve(places_.size());
  for (const auto& pixels : places_) {
    const bool isUnchanged = old != frames_.end() && !before->changed.overlaps(pixels);
    tiles.push_back(isUnchanged ? old->second[tiles.size()] : tileOf(surface, pixels));
    isFull_ = size_ + sizeOfLists > budget_;
    if (isFull_) return;
  }
  size_ += sizeOfLists;
  frames_.emplace(frame, std::move(tiles));
}

void KeptFrames::keepForgotten(const FileIdentity& frame, cairo_surface_t* surface,
                               const Region& part) {
  cairo_surface_flush(surface);
  Tiles& tiles = frames_.at(frame);
  for (std::size_t index = 0; index < tiles.size() && size_ <= budget_; ++index) {
    if (!tiles[index] && part.overlaps(places_[index])) {
      tiles[index] = tileOf(surface, places_[index]);
    }
  }
}

std::shared_ptr<const KeptFrames::Tile> KeptFrames::tileOf(cairo_surface_t* surface,
                                                           const cairo_rectangle_int_t& pixels) {
  const std::size_t length = static_cast<std::size_t>(pixels.width) * screenPixelSize;
  char* target = pixels_.data();
  for (int row = 0; row < pixels.height; ++row, target += length) {
    std::memcpy(target, pixelAt(surface, pixels.x, pixels.y + row), length);
  }
  const int size = LZ4_compress_default(pixels_.data(), compressed_.data(),
                                        static_cast<int>(target - pixels_.data()),
                                        static_cast<int>(compressed_.size()));
  const std::string_view bytes(compressed_.data(), static_cast<std::size_t>(size));
  auto& known = tiles_[std::hash<std::string_view>()(bytes)];
  // A tile with the same hash and other bytes is replaced here, but stays with its frames.
  if (!known || !std::ranges::equal(*known, bytes)) {
    known = std::make_shared<const Tile>(bytes.begin(), bytes.end());
    size_ += known->size() + sizeOfNode;
  }
  return known;
}

}  // namespace platform::backend
