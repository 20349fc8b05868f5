// What the invented apps have to show. Main thread.
#pragma once

#include <span>

#include "host/artwork/apps.h"
#include "host/artwork/painting.h"

namespace artwork {

struct Entry {
  const char* title;
  const char* day;
  const char* text;
  // Of a small picture.
  Color sky;
  Color land;
};

// Returns the entries of an app with this page; those of Journal if the page has none.
std::span<const Entry> entriesOf(Page page);

}  // namespace artwork
