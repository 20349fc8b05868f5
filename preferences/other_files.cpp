#include "preferences/other_files.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace preferences {
namespace {

// A kind of file that users may take for a GIF, and how it begins.
struct Format {
  std::size_t offset;
  std::string_view bytes;
  std::string_view name;
};

constexpr std::string_view webPage = "a web page";

// The first one that fits counts.
constexpr Format formats[] = {
    {8, "WEBP", "WebP"},
    {0, "\xff\xd8\xff", "JPEG"},
    {0, "\x89PNG", "a damaged PNG"},
    {4, "ftypavi", "AVIF"},
    {4, "ftyphei", "HEIC"},
    {4, "ftypmif", "HEIC"},
    {4, "ftyp", "MP4"},
    {0, "\x1a\x45\xdf\xa3", "WebM or Matroska"},
    {8, "AVI ", "AVI"},
    {0, "BM", "BMP"},
    {0, "<svg", "SVG"},
    {0, "<?xml", "SVG or other XML"},
    {0, "<!DOCTYPE", webPage},
    {0, "<!doctype", webPage},
    {0, "<html", webPage},
    {0, "PK\x03\x04", "a ZIP archive"},
};

}  // namespace

std::string problemOfOtherFile(std::string_view start) {
  const auto* format = std::ranges::find_if(formats, [start](const Format& each) {
    return start.size() > each.offset && start.substr(each.offset).starts_with(each.bytes);
  });
  if (format == std::end(formats)) return "it is not a GIF";
  const std::string problem = "it is " + std::string(format->name) + ", not a GIF or PNG; ";
  if (format->name == webPage) return problem + "download the picture itself";
  return problem + "convert it, for example with ffmpeg";
}

}  // namespace preferences
