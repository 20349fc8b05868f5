// Writes the icon of Lumora into an SVG file: draw_icon FILE.svg

#include <cstdio>
#include <cstdlib>

#include <cairo-svg.h>

#include "host/artwork/app_icon.h"

int main(int argc, char** argv) {
  if (argc != 2) return EXIT_FAILURE;
  constexpr double side = 128;
  cairo_surface_t* surface = cairo_svg_surface_create(argv[1], side, side);
  cairo_svg_surface_set_document_unit(surface, CAIRO_SVG_UNIT_PX);
  cairo_t* context = cairo_create(surface);
  artwork::drawAppIcon(context, side);
  cairo_destroy(context);
  cairo_surface_finish(surface);
  const cairo_status_t status = cairo_surface_status(surface);
  cairo_surface_destroy(surface);
  if (status != CAIRO_STATUS_SUCCESS) std::fprintf(stderr, "%s\n", cairo_status_to_string(status));
  return status == CAIRO_STATUS_SUCCESS ? EXIT_SUCCESS : EXIT_FAILURE;
}
