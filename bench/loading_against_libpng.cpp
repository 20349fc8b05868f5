// Compares loading a frame's file as pixels for the screen with libpng and libspng.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>

#include <png.h>
#include <spng.h>

#include "bench/bench_peers.h"
#include "bench/stopwatch.h"
#include "platform/linux/images/picture/picture.h"
#include "platform/linux/images/png/reader.h"
#include "platform/linux/views/picture_surface.h"

namespace bench {
namespace {

using namespace platform;
using namespace platform::backend;

[[noreturn]] void fail(const char* what) {
  std::fprintf(stderr, "bench: %s\n", what);
  std::exit(1);
}

Bytes contentsOf(const char* path) {
  std::ifstream file(path, std::ios::binary);
  Bytes bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  if (bytes.empty()) fail(path);
  return bytes;
}

// Loads premultiplied BGRA, which libpng's BGRA is for opaque images.
void loadByLibpng(const Bytes& file, Bytes& pixels) {
  png_image header{};
  header.version = PNG_IMAGE_VERSION;
  if (!png_image_begin_read_from_memory(&header, file.data(), file.size())) fail("libpng");
  header.format = PNG_FORMAT_BGRA;
  if (!png_image_finish_read(&header, nullptr, pixels.data(), 0, nullptr)) fail("libpng");
}

void loadByLibspng(const Bytes& file, Bytes& pixels) {
  spng_ctx* context = spng_ctx_new(0);
  spng_set_png_buffer(context, file.data(), file.size());
  if (spng_decode_image(context, pixels.data(), pixels.size(), SPNG_FMT_RGBA8, 0) != 0) {
    fail("libspng");
  }
  spng_ctx_free(context);
}

struct Ratios {
  double onTheirs;
  double onOurs;
};

// Returns an image of this shape that shares nothing with any other.
ImageRef blankLike(const UIImage& image) {
  const PictureShape& shape = image.impl().shape;
  Strips strips;
  for (int index = 0; index < shape.stripCount(); ++index) {
    auto strip = shape.makeStrip(index);
    std::ranges::fill(strip->bytes(), std::uint8_t{0});
    strips.push_back(std::move(strip));
  }
  return makeImage(shape, image.impl().palette, std::move(strips));
}

// `before` is what is on the screen when the file is loaded; nullptr for an unrelated image. The
// screen's memory is already allocated, like the other libraries' buffers.
Ratios measure(const std::string& name, const Bytes& ours, const Bytes& theirs,
               const Bytes* before) {
  const auto file = NSData::dataWithBytes(ours);
  const auto fileBefore = before ? NSData::dataWithBytes(*before) : nullptr;
  auto picture = png::decodePng(*file);
  if (!picture) fail("not an image");
  const double pixels = double{1} * picture->width() * picture->height();
  Bytes room(static_cast<std::size_t>(pixels) * 4);
  PictureSurface surface;
  const ImageRef blank = blankLike(*picture);
  // Nothing of this image can be shared when the file is loaded again.
  picture = nullptr;
  ImageRef shown;
  auto show = [&](const NSData& data) {
    shown = png::decodePng(data);
    surface.update(*shown);
  };
  const auto times =
      medianMilliseconds(9,
                         [&] {
                           shown = nullptr;
                           surface.update(*blank);
                           if (fileBefore) show(*fileBefore);
                         },
                         {[&] { show(*file); }, [&] { loadByLibpng(theirs, room); },
                          [&] { loadByLibpng(ours, room); }, [&] { loadByLibspng(ours, room); }});
  auto perPixel = [pixels](double milliseconds) { return rounded(milliseconds * 1e6 / pixels, 2); };
  const Ratios ratios{times[1] / times[0], times[2] / times[0]};
  printRow({name, perPixel(times[0]), perPixel(times[1]), perPixel(times[2]), perPixel(times[3]),
            rounded(ratios.onTheirs, 1), rounded(ratios.onOurs, 1)});
  return ratios;
}

}  // namespace

void benchLoading(const std::string& name, const LoadedFiles& files) {
  const Bytes ours = contentsOf(files.ours);
  const Bytes theirs = contentsOf(files.theirs);
  const Bytes before = contentsOf(files.before);
  std::printf("## Loading a frame for the screen: %s, ns per pixel\n\n", name.c_str());
  printRow({"shown before", "Lumora", "libpng, theirs", "libpng, ours", "libspng, ours",
            "of theirs", "of ours"});
  printRow({"---", "---", "---", "---", "---", "---", "---"});
  const Ratios fromNothing = measure("nothing alike", ours, theirs, nullptr);
  const Ratios inOrder = measure("the frame before", ours, theirs, &before);
  std::printf("\n");
  printGoal("at least 6 times libpng on the other's file: " + rounded(fromNothing.onTheirs, 1),
            fromNothing.onTheirs >= 6);
  printGoal("at least 3 times libpng on our own file: " + rounded(fromNothing.onOurs, 1),
            fromNothing.onOurs >= 3);
  if (files.standsStill) {
    printGoal("at least 20 times if most is unchanged: " + rounded(inOrder.onTheirs, 1),
              inOrder.onTheirs >= 20);
  }
}

}  // namespace bench
