#include <cstdlib>
#include <random>

#include <gtest/gtest.h>

#include "gifview/gif_frame_delay.h"
#include "platform/image_source.h"
#include "platform/linux/images/gif/file.h"
#include "platform/linux/images/gif/lzw.h"
#include "platform/linux/images/png/reader.h"
#include "platform/property_list.h"
#include "tests/fixture/gif_maker.h"
#include "tests/fixture/stage.h"

namespace {

using namespace testing_stage;
using platform::Bytes;
using platform::CGImageSource;
using platform::NSData;

constexpr std::size_t widthAt = 6;
constexpr std::size_t headerSize = 13;
constexpr std::size_t firstImageAt = headerSize + 8;

Bytes withScreen(Bytes gif, int width, int height) {
  gif[widthAt] = static_cast<std::uint8_t>(width);
  gif[widthAt + 1] = static_cast<std::uint8_t>(width >> 8);
  gif[widthAt + 2] = static_cast<std::uint8_t>(height);
  gif[widthAt + 3] = static_cast<std::uint8_t>(height >> 8);
  return gif;
}

// Decodes everything that can be decoded and returns the number of frames.
int framesOf(const Bytes& gif) {
  auto source = CGImageSource::createWithData(NSData::dataWithBytes(gif));
  int frames = 0;
  for (int index = 0; source && index < source->count(); ++index) {
    if (source->createImageAtIndex(index)) ++frames;
    source->copyPropertiesAtIndex(index);
  }
  return frames;
}

TEST(Gif, DecodesFramesInAnyOrder) {
  auto source =
      CGImageSource::createWithData(NSData::dataWithBytes(makeGif({{red}, {green}, {blue}})));
  ASSERT_EQ(source->count(), 3);
  auto colorOf = [&source](int index) {
    const auto image = source->createImageAtIndex(index);
    const auto pixel = pixelAt(*image, 0, 0);
    return Color{pixel[0], pixel[1], pixel[2]};
  };
  EXPECT_EQ(colorOf(2), blue);
  EXPECT_EQ(colorOf(0), red);
  EXPECT_EQ(colorOf(1), green);
  EXPECT_EQ(source->createImageAtIndex(3), nullptr);
  EXPECT_EQ(source->createImageAtIndex(-1), nullptr);
}

// Large images are decoded and drawn ahead if they are read in order.
TEST(Gif, DecodesTheSameFramesAheadAndAfterAJump) {
  std::vector<Frame> frames;
  for (std::uint8_t red = 0; red < 12; ++red) frames.push_back({{red, 0, 0}});
  Bytes gif = makeGif(frames, 300, 300);
  const std::size_t imageSize = (gif.size() - headerSize - 1) / frames.size();
  constexpr std::size_t codeSizeAt = 16;
  constexpr int damaged = 7;
  gif[firstImageAt + damaged * imageSize + codeSizeAt] = 20;
  auto source = CGImageSource::createWithData(NSData::dataWithBytes(gif));
  for (const int index : {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 3, 4, 5, 6, 1, 2, 11, 0}) {
    const auto image = source->createImageAtIndex(index);
    ASSERT_EQ(image == nullptr, index == damaged) << index;
    if (image) {
      EXPECT_EQ(pixelAt(*image, 299, 299)[0], index);
    }
  }
}

TEST(Gif, IsRejectedIfItsScreenIsTooLarge) {
  const Bytes gif = makeGif({{red}});
  auto isTaken = [&gif](int width, int height) {
    return CGImageSource::createWithData(NSData::dataWithBytes(withScreen(gif, width, height))) !=
           nullptr;
  };
  EXPECT_FALSE(isTaken(65535, 65535));
  EXPECT_FALSE(isTaken(0, 10));
  EXPECT_TRUE(isTaken(2000, 2000));
  // Longer than any side that can be drawn.
  EXPECT_FALSE(isTaken(32768, 4));
  EXPECT_TRUE(isTaken(4, 32767));
}

TEST(Gif, ClipsLargeImagesAndRejectsGiantOnes) {
  Bytes gif = withScreen(makeGif({{red}}, 20, 20), 5, 5);
  const auto image =
      CGImageSource::createWithData(NSData::dataWithBytes(gif))->createImageAtIndex(0);
  EXPECT_EQ(image->width(), 5);
  EXPECT_EQ(platform::backend::pixelsOf(*image).size(), 100U);
  for (std::size_t at = firstImageAt + 5; at < firstImageAt + 9; ++at) gif[at] = 0xFF;
  EXPECT_EQ(CGImageSource::createWithData(NSData::dataWithBytes(gif))->createImageAtIndex(0),
            nullptr);
}

TEST(Gif, DecodesLeadingFramesWhereverItIsTruncated) {
  const Bytes whole = makeGif({{red}, {green}, {blue}}, 16, 16);
  int most = 0;
  for (std::size_t size = 0; size <= whole.size(); ++size) {
    const int frames = framesOf(Bytes(whole.begin(), whole.begin() + static_cast<long>(size)));
    EXPECT_GE(frames, most);
    most = frames;
  }
  EXPECT_EQ(most, 3);
}

TEST(Gif, LimitsItsFramesToWhatADelayListHolds) {
  const Bytes one = makeGif({{red}}, 1, 1);
  Bytes many(one.begin(), one.begin() + headerSize);
  for (int each = 0; each < 600000; ++each) {
    many.insert(many.end(), one.begin() + headerSize, one.end() - 1);
  }
  EXPECT_EQ(CGImageSource::createWithData(NSData::dataWithBytes(many))->count(), 1 << 19);
  const DeviceRoot root;
  EXPECT_TRUE(platform::writeArrayToFile(std::vector<std::string>(1 << 19, "655.350000"), "/list"));
}

TEST(Gif, SurvivesRandomDamage) {
  std::mt19937 random(20);
  const Bytes whole = makeGif({{red}, {green}, {blue}}, 12, 12);
  for (int round = 0; round < 5000; ++round) {
    Bytes gif = whole;
    for (int change = 0; change < 1 + round % 4; ++change) {
      // The screen size is kept, because it determines the work of a round.
      const auto at = 10 + random() % (gif.size() - 10);
      gif[at] = static_cast<std::uint8_t>(random());
    }
    EXPECT_LE(framesOf(gif), 200);
  }
}

// Returns the first `count` indices of these sub-blocks; std::nullopt if there are fewer.
std::optional<Bytes> decoded(const Bytes& subBlocks, int minimumCodeSize, std::size_t count) {
  const auto data = NSData::dataWithBytes(subBlocks);
  platform::backend::gif::SubBlocks blocks(data->impl(), 0);
  platform::backend::gif::IndexBuffer buffer;
  buffer.reset(count);
  if (decodeLzw(blocks, minimumCodeSize, buffer) < count) return std::nullopt;
  return Bytes(buffer.indices().begin(), buffer.indices().end());
}

TEST(Lzw, StopsAtInvalidCodesAndAtTheEnd) {
  EXPECT_EQ(decoded({}, 2, 16), std::nullopt);
  EXPECT_EQ(decoded({1, 0x07, 0}, 2, 16), std::nullopt);
  EXPECT_EQ(decoded({5, 1, 2}, 2, 16), std::nullopt);
  EXPECT_EQ(decoded({1, 0, 0}, 9, 1), std::nullopt);
  EXPECT_EQ(decoded({1, 0, 0}, 0, 1), std::nullopt);
}

TEST(Lzw, NeedsNoLeadingClearCodeOrEndCode) {
  // Codes of 3 bits: 1, 6 (the string that is still being defined), 2.
  EXPECT_EQ(decoded({2, 0b10110001, 0b0, 0}, 2, 4), (Bytes{1, 1, 1, 2}));
}

TEST(Lzw, DecodesStringsThatOverlapTheirOwnCopy) {
  // Codes of 9 bits, each for the string that is still being defined: one index, two, three, ...
  constexpr unsigned clear = 256;
  constexpr unsigned strings = 60;
  constexpr std::size_t size = (strings * 9 + 7) / 8;
  Bytes subBlock(1 + size);
  subBlock[0] = size;
  for (unsigned string = 0; string < strings; ++string) {
    const unsigned code = string == 0 ? 7 : clear + 1 + string;
    for (unsigned bit = 0; bit < 9; ++bit) {
      const unsigned at = string * 9 + bit;
      std::uint8_t& byte = subBlock[1 + at / 8];
      byte = static_cast<std::uint8_t>(byte | (code >> bit & 1) << at % 8);
    }
  }
  const std::size_t count = strings * (strings + 1) / 2;
  EXPECT_EQ(decoded(subBlock, 8, count), Bytes(count, std::uint8_t{7}));
}

TEST(GifDelay, DefaultsToATenthIfShortOrMissing) {
  struct Case {
    std::optional<int> stored;
    double delay;
  };
  for (const Case& each : {Case{0, 0.1}, Case{1, 0.1}, Case{2, 0.02}, Case{3, 0.03},
                           Case{65535, 655.35}, Case{std::nullopt, 0.1}}) {
    auto source =
        CGImageSource::createWithData(NSData::dataWithBytes(makeGif({{red, each.stored}})));
    EXPECT_EQ(lumora::CGImageSourceGetGifFrameDelay(*source, 0), each.delay);
  }
  auto source = CGImageSource::createWithData(NSData::dataWithBytes(makeGif({{red, 50}})));
  EXPECT_EQ(lumora::CGImageSourceGetGifFrameDelay(*source, 7), 0.1);
}

}  // namespace
