#include "host/artwork/app_entries.h"

namespace artwork {
namespace {

constexpr Entry journal[] = {
    {"First frost", "Monday", "The meadow was white until nine, then all of it was gone.",
     rgb(0xbcd6e6), rgb(0x5c86a6)},
    {"A walk by the lake", "Sunday", "Two herons, one patient angler and hardly any wind.",
     rgb(0xf4c9a4), rgb(0x3f7f86)},
    {"Soup for eight", "Friday", "Pumpkin, ginger, a little orange. Write down the spices!",
     rgb(0xf7d58c), rgb(0xcf7240)},
    {"The old observatory", "Thursday", "They still open the dome by hand on clear nights.",
     rgb(0x6a62a8), rgb(0x2a2857)},
    {"Seeds to order", "Tuesday", "Sweet peas, cornflowers, and the tall marigolds again.",
     rgb(0xdfe8b8), rgb(0x6d9a5b)},
    {"Train to the coast", "Monday", "Left the rain behind after the second tunnel.", rgb(0xf0b4ae),
     rgb(0x8a5286)},
    {"Piano evening", "Saturday", "Slow pieces only, and nobody looked at the time.", rgb(0xd8c4ea),
     rgb(0x6f55a5)},
    {"New boots", "Thursday", "Stiff for the first mile and perfect ever after.", rgb(0xead9c2),
     rgb(0x9a6a4a)},
    {"Ideas for the attic", "Wednesday", "A desk below the window, shelves along the slope.",
     rgb(0xc4e0d8), rgb(0x4a8578)},
    {"Market day", "Saturday", "Plums, a jar of honey and far too many apples.", rgb(0xf6c6b8),
     rgb(0xb54f5c)},
    {"Letter from Ada", "Friday", "Four pages, and a pressed fern between them.", rgb(0xcfe3c4),
     rgb(0x53876b)},
    {"Rain all day", "Thursday", "Good weather for the last chapters of the long book.",
     rgb(0xc3ccdd), rgb(0x5a6788)},
};

constexpr Entry messages[] = {
    {"Ada", "9:12", "Shall we take the early train? I will bring the fern.", rgb(0xbcd6e6),
     rgb(0x5c86a6)},
    {"Jonas", "8:47", "The dome is open tonight if the sky stays like this.", rgb(0xf4c9a4),
     rgb(0x3f7f86)},
    {"Mira", "Monday", "Photos from the lake are in the shared folder.", rgb(0x6a62a8),
     rgb(0x2a2857)},
    {"Allotment club", "Sunday", "Seeds have arrived. Bring a box and a pencil.", rgb(0xdfe8b8),
     rgb(0x6d9a5b)},
    {"Uncle Theo", "Sunday", "The boots fit. I walked to the mill and back.", rgb(0xf0b4ae),
     rgb(0x8a5286)},
    {"Library", "Friday", "The long book is due in two weeks.", rgb(0xead9c2), rgb(0x9a6a4a)},
    {"Piano evening", "Thursday", "Slow pieces again? Saturday at seven.", rgb(0xc4e0d8),
     rgb(0x4a8578)},
    {"Lin", "Tuesday", "Ginger, orange, and a little more salt.", rgb(0xd8c4ea), rgb(0x6f55a5)},
};

constexpr Entry recordings[] = {
    {"Lantern on the water", "4:02", "Slow piano with rain in the background.", rgb(0x6a62a8),
     rgb(0x2a2857)},
    {"After the second tunnel", "3:31", "Strings, a train, and then only strings.", rgb(0xdfe8b8),
     rgb(0x6d9a5b)},
    {"North window", "5:16", "Recorded in one take under the roof.", rgb(0xf0b4ae), rgb(0x8a5286)},
    {"Two herons", "2:48", "Clarinet and a patient double bass.", rgb(0xead9c2), rgb(0x9a6a4a)},
    {"First frost", "3:55", "Glass harp, very quiet. Use headphones.", rgb(0xc4e0d8),
     rgb(0x4a8578)},
    {"The angler", "4:40", "A waltz that never hurries.", rgb(0xd8c4ea), rgb(0x6f55a5)},
    {"Marigold", "3:07", "Guitar by the open door.", rgb(0xbcd6e6), rgb(0x5c86a6)},
    {"Long book, last chapter", "6:12", "The theme of the beginning, once more.", rgb(0xf4c9a4),
     rgb(0x3f7f86)},
};

constexpr Entry papers[] = {
    {"Attic, floor plan", "2 pages", "A desk below the window, shelves along the slope.",
     rgb(0xf0b4ae), rgb(0x8a5286)},
    {"Soup for eight", "1 page", "Pumpkin, ginger, orange. The spices are on the back.",
     rgb(0xead9c2), rgb(0x9a6a4a)},
    {"Train tickets", "3 pages", "Window seats, first carriage, no changes.", rgb(0xc4e0d8),
     rgb(0x4a8578)},
    {"Star chart", "1 page", "Autumn sky at ten, looking north.", rgb(0xd8c4ea), rgb(0x6f55a5)},
    {"Seed list", "2 pages", "Sweet peas, cornflowers, tall marigolds.", rgb(0xbcd6e6),
     rgb(0x5c86a6)},
    {"Letter from Ada", "4 pages", "Scanned with the fern between the pages.", rgb(0xf4c9a4),
     rgb(0x3f7f86)},
};

constexpr Entry alarms[] = {
    {"6:45", "weekdays", "Up before the meadow thaws.", rgb(0xf4c9a4), rgb(0x3f7f86)},
    {"8:30", "Saturday", "Market day: plums, honey, apples.", rgb(0xf7d58c), rgb(0xcf7240)},
    {"18:50", "Saturday", "Leave for the piano evening.", rgb(0xd8c4ea), rgb(0x6f55a5)},
    {"22:00", "clear nights", "They open the dome by hand.", rgb(0x6a62a8), rgb(0x2a2857)},
};

}  // namespace

std::span<const Entry> entriesOf(Page page) {
  switch (page) {
    case Page::Messages:
      return messages;
    case Page::Recordings:
      return recordings;
    case Page::Papers:
      return papers;
    case Page::Alarms:
      return alarms;
    default:
      return journal;
  }
}

}  // namespace artwork
