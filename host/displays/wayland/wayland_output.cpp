#include "host/displays/wayland/wayland_output.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "host/displays/wayland/background_surface.h"

namespace host::wayland {
namespace {

using platform::backend::Region;
using platform::backend::RunLoop;

// The surface extends below panels.
constexpr int wholeOutput = -1;

}  // namespace

struct WaylandOutput::Listeners {
  static WaylandOutput& of(void* data) { return *static_cast<WaylandOutput*>(data); }

  static constexpr wl_output_listener output = {
      .geometry =
          [](void* data, wl_output*, int x, int y, int, int, int, const char*, const char*,
             int transform) {
            of(data).notePosition(x, y);
            // The odd transforms are those by 90 and 270 degrees.
            of(data).isOnItsSide_ = transform % 2 != 0;
          },
      .mode = [](void* data, wl_output*, std::uint32_t flags, int width, int height,
                 int) { of(data).noteMode(flags, width, height); },
      .done =
          [](void* data, wl_output*) {
            of(data).isDescribed_ = true;
            of(data).fitBuffers();
            of(data).changed_();
          },
      .scale = [](void* data, wl_output*, int factor) { of(data).integerScale_ = factor; },
      .name = [](void* data, wl_output*, const char* name) { of(data).name_ = name; },
      .description = [](void*, wl_output*, const char*) {},
  };

  static constexpr zxdg_output_v1_listener logicalOutput = {
      .logical_position =
          [](void* data, zxdg_output_v1*, int x, int y) {
            of(data).x_ = x;
            of(data).y_ = y;
          },
      .logical_size =
          [](void* data, zxdg_output_v1*, int width, int height) {
            of(data).logicalWidth_ = width;
            of(data).logicalHeight_ = height;
          },
      .done = [](void*, zxdg_output_v1*) {},
      .name = [](void* data, zxdg_output_v1*, const char* name) { of(data).name_ = name; },
      .description = [](void*, zxdg_output_v1*, const char*) {},
  };

  static constexpr zwlr_layer_surface_v1_listener layerSurface = {
      .configure =
          [](void* data, zwlr_layer_surface_v1*, std::uint32_t serial, std::uint32_t width,
             std::uint32_t height) {
            of(data).configure(serial, static_cast<int>(width), static_cast<int>(height));
          },
      // The compositor removes the output next.
      .closed = [](void* data, zwlr_layer_surface_v1*) { of(data).width_ = 0; },
  };

  static constexpr wl_callback_listener frame = {
      .done = [](void* data, wl_callback*, std::uint32_t) { of(data).noteFrameShown(); },
  };
};

WaylandOutput::WaylandOutput(const Globals& globals, OutputObject object,
                             std::uint32_t registryName, const DesktopOptions& options,
                             std::function<void()> changed)
    : globals_(globals),
      registryName_(registryName),
      changed_(std::move(changed)),
      object_(std::move(object)),
      name_("output-" + std::to_string(registryName)),
      painter_(options) {
  wl_output_add_listener(object_.get(), &Listeners::output, this);
}

const WaylandOutput& WaylandOutput::of(wl_output* object) {
  return *static_cast<const WaylandOutput*>(wl_output_get_user_data(object));
}

void WaylandOutput::askForPlace() {
  if (!globals_.outputs) return;
  logicalOutput_.reset(
      zxdg_output_manager_v1_get_xdg_output(globals_.outputs.get(), object_.get()));
  zxdg_output_v1_add_listener(logicalOutput_.get(), &Listeners::logicalOutput, this);
}

void WaylandOutput::start() {
  if (surface_ || !isDescribed_) return;
  surface_.reset(wl_compositor_create_surface(globals_.compositor.get()));
  const std::unique_ptr<wl_region, Destroy> nothing(
      wl_compositor_create_region(globals_.compositor.get()));
  wl_surface_set_input_region(surface_.get(), nothing.get());
  if (globals_.viewporter) {
    viewport_.reset(wp_viewporter_get_viewport(globals_.viewporter.get(), surface_.get()));
  }
  layerSurface_ = makeBackgroundSurface(globals_, surface_.get(), object_.get(), wholeOutput);
  zwlr_layer_surface_v1_add_listener(layerSurface_.get(), &Listeners::layerSurface, this);
  wl_surface_commit(surface_.get());
}

void WaylandOutput::stop() {
  frameCallback_.reset();
  buffers_.reset();
  damage_ = {};
  viewport_.reset();
  layerSurface_.reset();
  surface_.reset();
  width_ = height_ = 0;
  isStalled_ = isCovered_ = hasShownFrame_ = false;
  isBlank_ = true;
  usableArea_.reset();
}

void WaylandOutput::measureUsableArea(std::function<void()> changed) {
  if (surface_ && !usableArea_) usableArea_.emplace(globals_, object_.get(), std::move(changed));
}

// The logical output gives the position for scaled outputs, too.
void WaylandOutput::notePosition(int x, int y) {
  if (logicalOutput_) return;
  x_ = x;
  y_ = y;
}

void WaylandOutput::noteMode(std::uint32_t flags, int width, int height) {
  if ((flags & WL_OUTPUT_MODE_CURRENT) != 0) mode_ = {width, height};
}

Output WaylandOutput::describe() const {
  const PixelSize pixels = pixelSize();
  const int width = width_ > 0 ? width_ : logicalWidth_;
  const double scale =
      width > 0 && pixels.width > 0 ? static_cast<double>(pixels.width) / width : integerScale_;
  return {.name = name_,
          .x = x_,
          .y = y_,
          .width = width,
          .height = width_ > 0 ? height_ : logicalHeight_,
          .scale = scale,
          .isUnseen = isUnseen(),
          .isPainted = hasShownFrame_};
}

// The surface covers the whole output, so its pixels are those of the output's mode. Without a
// viewport the compositor accepts only whole multiples of the logical size.
WaylandOutput::PixelSize WaylandOutput::pixelSize() const {
  if (!globals_.viewporter || mode_.width == 0)
    return {width_ * integerScale_, height_ * integerScale_};
  return isOnItsSide_ ? PixelSize{mode_.height, mode_.width} : mode_;
}

void WaylandOutput::configure(std::uint32_t serial, int width, int height) {
  zwlr_layer_surface_v1_ack_configure(layerSurface_.get(), serial);
  width_ = width;
  height_ = height;
  // The next commit must answer the event, even if the size has not changed.
  buffers_.reset();
  fitBuffers();
  changed_();
}

void WaylandOutput::fitBuffers() {
  const PixelSize size = pixelSize();
  if (width_ == 0 || size.width == 0 || size.height == 0) return;
  if (buffers_ && buffers_->width() == size.width && buffers_->height() == size.height) return;
  buffers_ = std::make_unique<Buffers>(globals_.memory.get(), size.width, size.height);
  damage_ = Region({0, 0, size.width, size.height});
  isBlank_ = true;
  // A callback for the old size may never come.
  frameCallback_.reset();
  RunLoop::main().setNeedsPartialDisplay();
}

// The scale is that of the width. As the logical size is rounded, that of the height differs.
platform::CGRect WaylandOutput::onWholePixels(const platform::CGRect& area) const {
  const Output output = describe();
  const double down = buffers_->height() / (output.height * output.scale);
  return {std::round(area.x), std::round(area.y * down), std::round(area.width),
          std::round(area.height * down)};
}

void WaylandOutput::show(const WallpaperPicture& picture, const platform::CGRect& scaledArea) {
  if (!buffers_) return;
  const platform::CGRect area = onWholePixels(scaledArea);
  const Region changed =
      painter_.affectedPart(picture, area, {0, 0, buffers_->width(), buffers_->height()});
  damage_.add(changed);
  buffers_->addStale(changed);
  if (damage_.isEmpty() || frameCallback_ || !mustPaint(picture)) return;
  Buffers::OneBuffer* buffer = buffers_->free();
  if (buffer == nullptr) return;
  painter_.paint(picture, area, buffer->surface.get(), buffer->stale);
  commit(*buffer);
}

// Until the surface has been painted, the compositor shows nothing of it.
bool WaylandOutput::mustPaint(const WallpaperPicture& picture) const {
  return !isUnseen() || (isBlank_ && picture.exists());
}

void WaylandOutput::commit(Buffers::OneBuffer& buffer) {
  buffer.stale = {};
  buffer.isBusy = true;
  isBlank_ = false;
  wl_surface_attach(surface_.get(), buffer.object.get(), 0, 0);
  for (const auto& part : std::exchange(damage_, {}).rectangles()) {
    wl_surface_damage_buffer(surface_.get(), part.x, part.y, part.width, part.height);
  }
  if (viewport_) {
    wp_viewport_set_destination(viewport_.get(), width_, height_);
  } else {
    wl_surface_set_buffer_scale(surface_.get(), integerScale_);
  }
  frameCallback_.reset(wl_surface_frame(surface_.get()));
  wl_callback_add_listener(frameCallback_.get(), &Listeners::frame, this);
  committedAt_ = Clock::now();
  wl_surface_commit(surface_.get());
}

bool WaylandOutput::setCovered(bool isCovered) {
  if (std::exchange(isCovered_, isCovered) == isCovered) return false;
  // What the compositor did not show below the windows is not late.
  committedAt_ = Clock::now();
  if (!damage_.isEmpty()) RunLoop::main().setNeedsPartialDisplay();
  return true;
}

void WaylandOutput::noteFrameShown() {
  frameCallback_.reset();
  if (!std::exchange(hasShownFrame_, true)) changed_();
  if (!damage_.isEmpty()) RunLoop::main().setNeedsPartialDisplay();
  if (std::exchange(isStalled_, false)) changed_();
}

std::optional<WaylandOutput::Clock::time_point> WaylandOutput::deadline() const {
  constexpr std::chrono::seconds patience{1};
  if (!frameCallback_ || isUnseen()) return std::nullopt;
  return committedAt_ + patience;
}

void WaylandOutput::noteDeadline() {
  if (!std::exchange(isStalled_, true)) changed_();
}

}  // namespace host::wayland
