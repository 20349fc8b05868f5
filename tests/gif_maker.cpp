#include "tests/gif_maker.h"

#include <algorithm>
#include <initializer_list>

namespace testing_stage {
namespace {

using platform::Bytes;

// With this size codes are whole bytes, as long as the table is cleared before it has grown.
constexpr int codeSize = 7;
constexpr std::uint8_t clearCode = 1 << codeSize;
constexpr std::uint8_t endCode = clearCode + 1;
constexpr int codesBetweenClears = 100;

void addBytes(Bytes& gif, std::initializer_list<std::uint8_t> bytes) {
  for (const std::uint8_t byte : bytes) gif.push_back(byte);
}

void addWord(Bytes& gif, int value) {
  gif.push_back(static_cast<std::uint8_t>(value));
  gif.push_back(static_cast<std::uint8_t>(value >> 8));
}

void addPixels(Bytes& gif, int count) {
  Bytes codes;
  for (int pixel = 0; pixel < count; ++pixel) {
    if (pixel % codesBetweenClears == 0) codes.push_back(clearCode);
    codes.push_back(0);
  }
  codes.push_back(endCode);
  gif.push_back(codeSize);
  constexpr std::size_t largestBlock = 255;
  for (std::size_t at = 0; at < codes.size(); at += largestBlock) {
    const auto end = std::min(at + largestBlock, codes.size());
    gif.push_back(static_cast<std::uint8_t>(end - at));
    for (std::size_t each = at; each < end; ++each) gif.push_back(codes[each]);
  }
  gif.push_back(0);
}

void addFrame(Bytes& gif, const Frame& frame, int width, int height) {
  if (frame.delay) {
    addBytes(gif, {0x21, 0xF9, 4, 0});
    addWord(gif, *frame.delay);
    addBytes(gif, {0, 0});
  }
  gif.push_back(0x2C);
  addWord(gif, 0);
  addWord(gif, 0);
  addWord(gif, width);
  addWord(gif, height);
  gif.push_back(0x80);
  // A table of two equal colours.
  const auto& [r, g, b] = frame.color;
  addBytes(gif, {r, g, b, r, g, b});
  addPixels(gif, width * height);
}

}  // namespace

Bytes makeGif(const std::vector<Frame>& frames, int width, int height) {
  Bytes gif;
  addBytes(gif, {'G', 'I', 'F', '8', '9', 'a'});
  addWord(gif, width);
  addWord(gif, height);
  addBytes(gif, {0, 0, 0});
  for (const Frame& frame : frames) addFrame(gif, frame, width, height);
  gif.push_back(0x3B);
  return gif;
}

}  // namespace testing_stage
