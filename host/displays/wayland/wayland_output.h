// An output of a Wayland session with the surface that shows the wallpaper on it. Main thread.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "host/desktop/output_painter.h"
#include "host/displays/wayland/buffers.h"
#include "host/displays/wayland/usable_area.h"
#include "host/displays/wayland/wayland_objects.h"
#include "host/home_screen/output.h"
#include "platform/linux/main_loop/run_loop.h"

namespace host::wayland {

class WaylandOutput {
 public:
  using Clock = platform::backend::RunLoop::Clock;

  // changed is called when describe() may give another result. globals must outlive this object.
  WaylandOutput(const Globals& globals, OutputObject object, std::uint32_t registryName,
                const DesktopOptions& options, std::function<void()> changed);
  WaylandOutput(const WaylandOutput&) = delete;
  WaylandOutput& operator=(const WaylandOutput&) = delete;

  // Returns the output of an object that was passed to the constructor.
  static const WaylandOutput& of(wl_output* object);

  // Returns the number by which the compositor announced the output.
  std::uint32_t registryName() const { return registryName_; }
  Output describe() const;

  // Asks the compositor for the place among the other outputs. Call it once, when all globals are
  // known.
  void askForPlace();
  // Makes the surface if there is none and the name is known: in the background layer, or above a
  // background of sway's own.
  void start();
  // Destroys the surface, if there is one.
  void stop();

  // Makes usableArea() known, and calls changed when it has changed. Call it after start().
  void measureUsableArea(std::function<void()> changed);
  const std::optional<UsableArea>& usableArea() const { return usableArea_; }

  // Paints what has changed on the area, in logical pixels times the scale, unless the compositor
  // is not ready for it: then the next call does.
  void show(const WallpaperPicture& picture, const platform::CGRect& scaledArea);

  bool isFading() const { return surface_ && painter_.isFading() && !isUnseen(); }

  // Tells if windows cover the output. Returns true if that is news.
  bool setCovered(bool isCovered);

  // Returns when the output counts as unseen unless the compositor shows the last frame before; or
  // nothing if no frame is on its way.
  std::optional<Clock::time_point> deadline() const;
  // Call it when the deadline has passed.
  void noteDeadline();

 private:
  struct PixelSize {
    int width = 0;
    int height = 0;
    friend bool operator==(const PixelSize&, const PixelSize&) = default;
  };
  struct Listeners;

  void notePosition(int x, int y);
  void noteMode(std::uint32_t flags, int width, int height);
  void configure(std::uint32_t serial, int width, int height);
  void noteFrameShown();
  PixelSize pixelSize() const;
  void fitBuffers();
  platform::CGRect onWholePixels(const platform::CGRect& area) const;
  bool isUnseen() const { return isStalled_ || isCovered_; }
  bool mustPaint(const WallpaperPicture& picture) const;
  void commit(Buffers::OneBuffer& buffer);

  const Globals& globals_;
  const std::uint32_t registryName_;
  const std::function<void()> changed_;
  const OutputObject object_;
  LogicalOutput logicalOutput_;
  std::string name_;
  // In logical pixels.
  int x_ = 0;
  int y_ = 0;
  int logicalWidth_ = 0;
  int logicalHeight_ = 0;
  int integerScale_ = 1;
  bool isOnItsSide_ = false;
  bool isDescribed_ = false;
  PixelSize mode_;

  Surface surface_;
  LayerSurface layerSurface_;
  Viewport viewport_;
  std::optional<UsableArea> usableArea_;
  // The surface's size in logical pixels; 0 until the compositor has chosen it.
  int width_ = 0;
  int height_ = 0;
  std::unique_ptr<Buffers> buffers_;
  OutputPainter painter_;
  // The part of the surface's contents that differs from the last commit.
  platform::backend::Region damage_;
  FrameCallback frameCallback_;
  Clock::time_point committedAt_;
  // True if the compositor has not shown the last frame in time.
  bool hasShownFrame_ = false;
  bool isStalled_ = false;
  bool isCovered_ = false;
  // True if the surface has no contents of this size.
  bool isBlank_ = true;
};

}  // namespace host::wayland
