#include "platform/linux/views/kept_frames.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <functional>
#include <string_view>
#include <utility>

#include <lz4.h>

namespace platform::backend {
namespace {

constexpr int screenPixelSize = 4;

char* rowOf(cairo_surface_t* surface, int row) {
  return reinterpret_cast<char*>(cairo_image_surface_get_data(surface)) +
         static_cast<std::ptrdiff_t>(row) * cairo_image_surface_get_stride(surface);
}

}  // namespace

// With few rows, a small change affects little; with many, they compress better.
int KeptFrames::rowsPerStrip() const {
  constexpr int stripSize = 1 << 15;
  return std::max(stripSize / (width_ * screenPixelSize), 1);
}

KeptFrames::Rows KeptFrames::rowsOfStrip(std::size_t index) const {
  const int first = static_cast<int>(index) * rowsPerStrip();
  return {first, std::min(first + rowsPerStrip(), height_)};
}

void KeptFrames::clear() {
  frames_.clear();
  strips_.clear();
  size_ = 0;
  isFull_ = false;
  missed_ = 0;
}

KeptFrames::Rows KeptFrames::difference(const FileIdentity& one, const FileIdentity& other) const {
  const Strips& before = frames_.at(one);
  const Strips& after = frames_.at(other);
  Rows rows;
  for (std::size_t index = 0; index < after.size(); ++index) {
    if (before[index] == after[index]) continue;
    if (rows.end == 0) rows.first = rowsOfStrip(index).first;
    rows.end = rowsOfStrip(index).end;
  }
  return rows;
}

void KeptFrames::draw(const FileIdentity& frame, cairo_surface_t* surface, Rows rows) {
  missed_ = 0;
  cairo_surface_flush(surface);
  const Strips& strips = frames_.at(frame);
  const int rowLength = width_ * screenPixelSize;
  const bool isContiguous = cairo_image_surface_get_stride(surface) == rowLength;
  for (std::size_t index = 0; index < strips.size(); ++index) {
    const auto [first, end] = rowsOfStrip(index);
    if (end <= rows.first || first >= rows.end) continue;
    const int length = (end - first) * rowLength;
    room_.resize(isContiguous ? 0 : static_cast<std::size_t>(length));
    char* target = isContiguous ? rowOf(surface, first) : room_.data();
    LZ4_decompress_safe(strips[index]->data(), target, static_cast<int>(strips[index]->size()),
                        length);
    for (int row = first; !isContiguous && row < end; ++row, target += rowLength) {
      std::memcpy(rowOf(surface, row), target, static_cast<std::size_t>(rowLength));
    }
  }
  cairo_surface_mark_dirty(surface);
}

void KeptFrames::keep(const FileIdentity& frame, cairo_surface_t* surface,
                      const std::optional<Before>& before) {
  if (budget_ == 0 || has(frame)) return;
  // Nothing of what is kept has been drawn for long, so all files have been replaced.
  constexpr int patience = 4096;
  if (isFull_ && ++missed_ > patience) clear();
  if (isFull_) return;
  const int width = cairo_image_surface_get_width(surface);
  const int height = cairo_image_surface_get_height(surface);
  if (std::exchange(width_, width) != width || std::exchange(height_, height) != height) clear();
  width_ = width;
  height_ = height;
  cairo_surface_flush(surface);
  const auto old = before ? frames_.find(before->frame) : frames_.end();
  Strips strips;
  for (int row = 0; row < height_; row += rowsPerStrip()) {
    const Rows rows = rowsOfStrip(strips.size());
    const bool isUnchanged = old != frames_.end() && (rows.end <= before->changed.first ||
                                                      rows.first >= before->changed.end);
    strips.push_back(isUnchanged ? old->second[strips.size()] : stripOf(surface, rows));
    isFull_ = size_ > budget_;
    if (isFull_) return;
  }
  frames_.emplace(frame, std::move(strips));
}

std::shared_ptr<const KeptFrames::Strip> KeptFrames::stripOf(cairo_surface_t* surface, Rows rows) {
  const int rowLength = width_ * screenPixelSize;
  const int length = (rows.end - rows.first) * rowLength;
  Strip pixels;
  const char* source = rowOf(surface, rows.first);
  if (cairo_image_surface_get_stride(surface) != rowLength) {
    pixels.reserve(static_cast<std::size_t>(length));
    for (int row = rows.first; row < rows.end; ++row) {
      const char* begin = rowOf(surface, row);
      pixels.insert(pixels.end(), begin, begin + rowLength);
    }
    source = pixels.data();
  }
  room_.resize(static_cast<std::size_t>(LZ4_compressBound(length)));
  const int size =
      LZ4_compress_default(source, room_.data(), length, static_cast<int>(room_.size()));
  const std::string_view bytes(room_.data(), static_cast<std::size_t>(size));
  auto& known = strips_[std::hash<std::string_view>()(bytes)];
  // A strip with the same hash and other bytes is replaced here, but stays with its frames.
  if (!known || !std::ranges::equal(*known, bytes)) {
    known = std::make_shared<const Strip>(bytes.begin(), bytes.end());
    size_ += known->size();
  }
  return known;
}

}  // namespace platform::backend
