#include "host/artwork/apps.h"

namespace artwork {
namespace {

constexpr std::size_t phoneDockCount = 4;
constexpr std::size_t padDockCount = 6;

constexpr Color paperTop = rgb(0xfffaf0);
constexpr Color paperBottom = rgb(0xefe3d0);

constexpr App apps[] = {
    {"Phone", Glyph::Keypad, Page::Messages, rgb(0x4fc3a8), rgb(0x1f8a86)},
    {"Mail", Glyph::Envelope, Page::Messages, rgb(0xf2a65e), rgb(0xd9663f)},
    {"Web", Glyph::Globe, Page::Papers, rgb(0x6f86e8), rgb(0x3d46b0)},
    {"Chat", Glyph::Chat, Page::Messages, rgb(0xe77f9b), rgb(0xb23f78)},
    {"Music", Glyph::MusicNote, Page::Recordings, rgb(0x9a6fe0), rgb(0x5a35a6)},
    {"Files", Glyph::Folder, Page::Papers, paperTop, paperBottom, rgb(0x3f6fb0)},
    {"Calendar", Glyph::Calendar, Page::Month, paperTop, paperBottom, rgb(0x2f7f74)},
    {"Photos", Glyph::Picture, Page::Pictures, rgb(0xf5b95f), rgb(0xdb5f7a)},
    {"Camera", Glyph::Camera, Page::Pictures, rgb(0x5b6077), rgb(0x2b2e42)},
    {"Weather", Glyph::SunAndCloud, Page::Weather, rgb(0x74b8ea), rgb(0x3b6cc4)},
    {"Clock", Glyph::Clock, Page::Alarms, rgb(0x3a3560), rgb(0x1c1a38), rgb(0xffdca8)},
    {"Maps", Glyph::Map, Page::Pictures, rgb(0x8cc98a), rgb(0x3f8f6f)},
    {"Journal", Glyph::Pencil, Page::Journal, paperTop, paperBottom, rgb(0xb8663a)},
    {"Books", Glyph::Book, Page::Papers, rgb(0xd98558), rgb(0x9c4538)},
    {"Podcasts", Glyph::Microphone, Page::Recordings, rgb(0xb679d6), rgb(0x7a3d9e)},
    {"Health", Glyph::Pulse, Page::Chart, paperTop, paperBottom, rgb(0xcf4a6a)},
    {"Wallet", Glyph::Wallet, Page::Papers, rgb(0x4a7f8c), rgb(0x1f4758)},
    {"Home", Glyph::House, Page::Weather, rgb(0xf0b65a), rgb(0xd98032)},
    {"Stocks", Glyph::TrendLine, Page::Chart, rgb(0x2f4858), rgb(0x172632), rgb(0x8fe3c0)},
    {"Settings", Glyph::Sliders, Page::Switches, rgb(0x9aa3b8), rgb(0x5d667f)},
};

constexpr std::size_t usualIndex = 12;

constexpr std::size_t dockCount(host::Idiom idiom) {
  return idiom == host::Idiom::Pad ? padDockCount : phoneDockCount;
}

}  // namespace

const App& usualApp() {
  return apps[usualIndex];
}

std::span<const App> dockApps(host::Idiom idiom) {
  return std::span(apps).first(dockCount(idiom));
}

std::span<const App> gridApps(host::Idiom idiom) {
  return std::span(apps).subspan(dockCount(idiom));
}

}  // namespace artwork
