// Benchmarks of single components.

#include <filesystem>

#include <benchmark/benchmark.h>

#include "bench/pictures.h"
#include "gifview/blur.h"
#include "gifview/playback_clock.h"
#include "platform/file_manager.h"
#include "platform/linux/files/device_root.h"
#include "platform/linux/freed_memory.h"
#include "platform/linux/images/gif/canvas.h"
#include "platform/linux/images/gif/lzw.h"
#include "platform/linux/images/picture/picture.h"
#include "platform/linux/images/png/deflate.h"
#include "platform/linux/views/picture_surface.h"
#include "platform/property_list.h"
#include "settings/device_paths.h"
#include "settings/settings_store.h"

namespace {

namespace fs = std::filesystem;
using namespace platform;
using namespace platform::backend;
using bench::indexedPicture;
using bench::screenHeight;
using bench::screenWidth;
using bench::Texture;

constexpr auto pixels = std::int64_t{screenWidth} * screenHeight;

Texture textureOf(const benchmark::State& state) {
  return state.range(0) == 0 ? Texture::Flat : Texture::Dithered;
}

Bytes indicesOf(const UIImage& image) {
  Bytes indices;
  for (int y = 0; y < image.height(); ++y) {
    const std::uint8_t* row = image.impl().row(y);
    indices.insert(indices.end(), row, row + image.width());
  }
  return indices;
}

// Packs codes of growing width into sub-blocks.
class LzwWriter {
 public:
  void put(unsigned code, unsigned width) {
    bits_ |= code << count_;
    for (count_ += width; count_ >= 8; count_ -= 8, bits_ >>= 8) putByte();
  }
  Bytes finish() {
    putByte();
    closeBlock();
    out_.push_back(0);
    return out_;
  }

 private:
  void putByte() {
    constexpr std::size_t fullBlock = 255;
    if (block_.size() == fullBlock) closeBlock();
    block_.push_back(static_cast<std::uint8_t>(bits_));
  }
  void closeBlock() {
    out_.push_back(static_cast<std::uint8_t>(block_.size()));
    out_.insert(out_.end(), block_.begin(), block_.end());
    block_.clear();
  }

  Bytes out_;
  Bytes block_;
  unsigned bits_ = 0;
  unsigned count_ = 0;
};

// A plain encoder: each code is that of the longest known string.
Bytes lzwOf(const Bytes& indices) {
  constexpr unsigned clear = 256;
  constexpr unsigned full = 4096;
  std::vector<std::array<std::uint16_t, 256>> next;
  unsigned used = 0;
  unsigned width = 0;
  LzwWriter writer;
  auto restart = [&] {
    next.assign(full, {});
    used = clear + 2;
    width = 9;
  };
  restart();
  writer.put(clear, width);
  unsigned code = indices.front();
  for (std::size_t at = 1; at < indices.size(); ++at) {
    const std::uint8_t index = indices[at];
    if (const unsigned longer = next[code][index]) {
      code = longer;
      continue;
    }
    writer.put(code, width);
    if (used == full) {
      writer.put(clear, width);
      restart();
    } else {
      if (used == 1U << width) ++width;
      next[code][index] = static_cast<std::uint16_t>(used++);
    }
    code = index;
  }
  writer.put(code, width);
  return writer.finish();
}

void DecodeLzw(benchmark::State& state) {
  const Bytes indices = indicesOf(*indexedPicture(textureOf(state), screenWidth, screenHeight));
  const auto data = NSData::dataWithBytes(lzwOf(indices));
  gif::IndexBuffer buffer;
  for (auto _ : state) {
    buffer.reset(indices.size());
    gif::SubBlocks blocks(data->impl(), 0);
    if (decodeLzw(blocks, 8, buffer) < indices.size()) state.SkipWithError("not decoded");
  }
  if (!std::ranges::equal(buffer.indices(), indices)) state.SkipWithError("not the same");
  state.SetBytesProcessed(state.iterations() * pixels);
}

void Composite(benchmark::State& state) {
  const Bytes indices = indicesOf(*indexedPicture(textureOf(state), screenWidth, screenHeight));
  gif::SubImage image;
  image.width = screenWidth;
  image.height = screenHeight;
  image.minimumCodeSize = 8;
  image.transparentIndex = 0;
  const gif::ColorTable colors(256);
  gif::Canvas canvas(screenWidth, screenHeight);
  for (auto _ : state) {
    canvas.draw(image, colors, indices);
    benchmark::DoNotOptimize(canvas.picture());
  }
  state.SetBytesProcessed(state.iterations() * pixels);
}

void Deflate(benchmark::State& state) {
  const auto picture = indexedPicture(textureOf(state), screenWidth, screenHeight);
  for (auto _ : state) {
    for (const auto& strip : picture->impl().strips) {
      benchmark::DoNotOptimize(png::deflatePiece(strip->bytes()));
    }
  }
  state.SetBytesProcessed(state.iterations() * pixels);
}

void Inflate(benchmark::State& state) {
  const auto picture = indexedPicture(textureOf(state), screenWidth, screenHeight);
  std::vector<Bytes> pieces;
  for (const auto& strip : picture->impl().strips)
    pieces.push_back(png::deflatePiece(strip->bytes()));
  Bytes room(picture->impl().strips.front()->bytes().size());
  for (auto _ : state) {
    for (std::size_t at = 0; at < pieces.size(); ++at) {
      const std::size_t size = picture->impl().strips[at]->bytes().size();
      if (!png::inflatePiece(pieces[at], std::span(room).first(size)))
        state.SkipWithError("damaged");
    }
  }
  state.SetBytesProcessed(state.iterations() * pixels);
}

void LookUp(benchmark::State& state) {
  const ImageRef pictures[] = {indexedPicture(Texture::Dithered, screenWidth, screenHeight),
                               indexedPicture(Texture::Flat, screenWidth, screenHeight)};
  PictureSurface surface;
  for (int next = 0; auto _ : state) surface.update(*pictures[++next % 2]);
  state.SetItemsProcessed(state.iterations() * pixels);
}

void Blur(benchmark::State& state) {
  const auto picture =
      imageFromPixels(screenWidth, screenHeight, bench::photoPixels(screenWidth, screenHeight));
  const auto radius = static_cast<std::int32_t>(state.range(0));
  for (auto _ : state) benchmark::DoNotOptimize(lumora::blurImageWithRadius(picture, radius));
  state.SetItemsProcessed(state.iterations() * pixels);
}

void ReadASetting(benchmark::State& state) {
  std::string folder = fs::temp_directory_path() / "lumora-bench-XXXXXX";
  if (mkdtemp(folder.data()) == nullptr) return state.SkipWithError("no folder");
  setDeviceRoot(folder);
  createDirectoryAtPath(fs::path(lumora::settingsPath).parent_path().string());
  NSMutableDictionary settings;
  settings.setString("1.5", "SHARED_GIF_SPEED");
  const bool isStored = settings.writeToFile(lumora::settingsPath);
  if (!isStored || lumora::getSharedGIFSpeed() != 1.5) state.SkipWithError("no settings");
  for (auto _ : state) {
    benchmark::DoNotOptimize(lumora::getSharedGIFSpeed());
  }
  fs::remove_all(folder);
}

void Tick(benchmark::State& state) {
  const auto durations = std::make_shared<const std::vector<double>>(60, 0.1);
  lumora::PlaybackClock clock;
  constexpr std::chrono::duration<double> refresh{1.0 / 60};
  for (auto _ : state) {
    if (clock.tick(refresh, durations, 1)) clock.advance(60);
  }
}

BENCHMARK(DecodeLzw)->ArgName("dithered")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(Composite)->ArgName("dithered")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(Deflate)->ArgName("dithered")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(Inflate)->ArgName("dithered")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(LookUp)->Unit(benchmark::kMillisecond);
BENCHMARK(Blur)->ArgName("radius")->Arg(1)->Arg(3)->Arg(10)->Arg(30)->Arg(100)->UseRealTime()->Unit(
    benchmark::kMillisecond);
BENCHMARK(ReadASetting);
BENCHMARK(Tick);

}  // namespace

int main(int count, char** words) {
  platform::backend::keepFreedMemory();
  benchmark::Initialize(&count, words);
  if (benchmark::ReportUnrecognizedArguments(count, words)) return 2;
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
