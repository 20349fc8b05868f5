// A frame's file to the colours that the screen wants, against libpng and libspng: on the file that
// ffmpeg would write of the picture (RGBA), on our own, and where most of the picture stands still.

#include <cstdio>
#include <cstdlib>

#include <png.h>
#include <spng.h>

#include "bench/bench_peers.h"
#include "bench/pictures.h"
#include "bench/stopwatch.h"
#include "platform/linux/byte_reader.h"
#include "platform/linux/picture.h"
#include "platform/linux/picture_surface.h"
#include "platform/linux/png.h"

namespace bench {
namespace {

using namespace platform;

[[noreturn]] void fail(const char* what) {
  std::fprintf(stderr, "bench: %s\n", what);
  std::exit(1);
}

Bytes bytesOf(const NSData& data) {
  Bytes bytes(data.length());
  ByteReader(data.impl()).read(bytes);
  return bytes;
}

// As RGBA without filters at level 1, which is what ffmpeg writes.
Bytes peersFile(const UIImage& image) {
  const Bytes pixels = pixelsOf(image);
  Bytes file;
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png_create_info_struct(png);
  png_set_write_fn(
      png, &file,
      [](png_structp writer, png_bytep data, png_size_t size) {
        auto* target = static_cast<Bytes*>(png_get_io_ptr(writer));
        target->insert(target->end(), data, data + size);
      },
      nullptr);
  png_set_compression_level(png, 1);
  png_set_filter(png, 0, PNG_FILTER_NONE);
  png_set_IHDR(png, info, static_cast<png_uint_32>(image.width()),
               static_cast<png_uint_32>(image.height()), 8, PNG_COLOR_TYPE_RGBA, PNG_INTERLACE_NONE,
               PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  png_write_info(png, info);
  for (int y = 0; y < image.height(); ++y) {
    png_write_row(
        png, &pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(image.width()) * 4]);
  }
  png_write_end(png, info);
  png_destroy_write_struct(&png, &info);
  return file;
}

// BGRA, premultiplied: for these opaque pictures libpng's BGRA is that.
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

struct Measure {
  const char* name;
  ImageRef picture;
  // Shown before, again and again; nullptr to start from nothing each time.
  ImageRef before;
};

}  // namespace

void benchLoading() {
  auto picture = [](Texture texture, int moved = 0) {
    return indexedPicture(texture, screenWidth, screenHeight, moved);
  };
  const Measure measures[] = {
      {"dithered", picture(Texture::Dithered), nullptr},
      {"flat", picture(Texture::Flat), nullptr},
      {"dithered, a tenth moves", picture(Texture::Dithered, 1), picture(Texture::Dithered)},
      {"flat, a tenth moves", picture(Texture::Flat, 1), picture(Texture::Flat)},
  };
  constexpr double pixels = double{screenWidth} * screenHeight;
  auto perPixel = [](double milliseconds) { return milliseconds * 1e6 / pixels; };
  std::printf("## Loading a frame of 1170x2532 for the screen, ns per pixel\n\n");
  printRow(
      {"picture", "Lumora", "libpng, RGBA", "libpng, ours", "libspng,ours", "on RGBA", "on ours"});
  printRow({"---", "---", "---", "---", "---", "---", "---"});
  std::vector<std::pair<std::string, bool>> goals;
  for (const Measure& measure : measures) {
    const Bytes ours = bytesOf(*UIImagePNGRepresentation(*measure.picture));
    const Bytes theirs = peersFile(*measure.picture);
    const auto file = NSData::dataWithBytes(ours);
    const auto fileBefore =
        measure.before ? NSData::dataWithBytes(bytesOf(*UIImagePNGRepresentation(*measure.before)))
                       : nullptr;
    Bytes room(static_cast<std::size_t>(pixels) * 4);
    PictureSurface surface;
    ImageRef shown;
    // What was shown before is loaded and drawn outside of the measure.
    auto times = medianMilliseconds(
        9, {[&] {
              if (!fileBefore) return;
              shown = nullptr;
              shown = decodePng(*fileBefore);
              surface.update(*shown);
            },
            [&] {
              if (!fileBefore) {
                shown = nullptr;
                surface = PictureSurface();
              }
              shown = decodePng(*file);
              surface.update(*shown);
            },
            [&] { loadByLibpng(theirs, room); }, [&] { loadByLibpng(ours, room); },
            [&] { loadByLibspng(ours, room); }});
    loadByLibpng(ours, room);
    if (surface.pixels() != room) fail("the pixels differ");
    const double onTheirs = times[2] / times[1];
    const double onOurs = times[3] / times[1];
    printRow({measure.name, rounded(perPixel(times[1]), 2), rounded(perPixel(times[2]), 2),
              rounded(perPixel(times[3]), 2), rounded(perPixel(times[4]), 2), rounded(onTheirs, 1),
              rounded(onOurs, 1)});
    const std::string name(measure.name);
    if (measure.before) {
      goals.emplace_back(
          name + ": at least 20 times libpng on the peer's file: " + rounded(onTheirs, 1),
          onTheirs >= 20);
    } else {
      goals.emplace_back(
          name + ": at least 6 times libpng on the peer's file: " + rounded(onTheirs, 1),
          onTheirs >= 6);
      goals.emplace_back(name + ": at least 3 times libpng on our file: " + rounded(onOurs, 1),
                         onOurs >= 3);
    }
  }
  std::printf("\n");
  for (const auto& [text, holds] : goals) printGoal(text, holds);
  std::printf("\n");
}

}  // namespace bench
