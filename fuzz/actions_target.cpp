// Fuzzes the whole library: a settings file of any contents, followed by any actions of the
// settings app and the user. Nothing outside of the device folder may change.

#include <algorithm>

#include "fuzz/device.h"
#include "fuzz/home_screen.h"
#include "settings/device_paths.h"

namespace {

// Two frames of two pixels each.
constexpr std::uint8_t gif[] = {
    'G', 'I', 'F',  '8',  '9', 'a',  2,    0, 1,    0,    0x80, 0,    0,    0, 0,    0, 255,
    255, 255, 0x21, 0xf9, 4,   0,    5,    0, 0,    0,    0x2c, 0,    0,    0, 0,    2, 0,
    1,   0,   0,    2,    2,   0x44, 0x0a, 0, 0x21, 0xf9, 4,    0,    5,    0, 0,    0, 0x2c,
    0,   0,   0,    0,    2,   0,    1,    0, 0,    2,    2,    0x44, 0x0a, 0, 0x3b,
};
constexpr auto incomingPath = "/var/mobile/Media/Downloads/SHARED_LUMORA_WALLPAPER.gif";

}  // namespace

// The input consists of the number of actions, the actions, and the settings file.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::size_t count = std::min<std::size_t>(data[0] % 16, size - 1);
  fuzz::springBoard();
  fuzz::clearDevice();
  fuzz::store(gif, sizeof gif, incomingPath);
  fuzz::store(data + 1 + count, size - 1 - count, lumora::settingsPath);
  for (std::size_t each = 1; each <= count; ++each) {
    fuzz::perform(data[each]);
    // Other actions are followed by the next one at once.
    if (data[each] < 128) fuzz::settle();
  }
  fuzz::settle();
  fuzz::checkSurroundings();
  return 0;
}
