#include "host/displays/wayland/sway_tree.h"

#include <memory>

#include <cairo.h>
#include <nlohmann/json.hpp>

namespace host::wayland {
namespace {

using nlohmann::json;

cairo_rectangle_int_t rectangleOf(const json& node) {
  const json& rectangle = node.at("rect");
  return {rectangle.at("x"), rectangle.at("y"), rectangle.at("width"), rectangle.at("height")};
}

// The part of an output that its windows leave free.
class FreePart {
 public:
  explicit FreePart(const cairo_rectangle_int_t& output)
      : region_(cairo_region_create_rectangle(&output), cairo_region_destroy) {}

  void subtract(const cairo_rectangle_int_t& part) {
    cairo_region_subtract_rectangle(region_.get(), &part);
  }
  bool isOutside(const cairo_rectangle_int_t& part) const {
    return cairo_region_contains_rectangle(region_.get(), &part) == CAIRO_REGION_OVERLAP_OUT;
  }

 private:
  std::unique_ptr<cairo_region_t, void (*)(cairo_region_t*)> region_;
};

// Only windows have this key.
bool isVisibleWindow(const json& node) {
  return node.value("visible", false);
}

// The title bars of a tabbed or stacked container lie between its top and its windows. Another
// window's title bar is not part of its rectangle either.
void subtractTitleBars(FreePart& free, const json& node, const json& parent) {
  const std::string layout = parent.at("layout");
  const cairo_rectangle_int_t place = rectangleOf(node);
  const int height = layout == "tabbed" || layout == "stacked"
                         ? place.y - rectangleOf(parent).y
                         : node.at("deco_rect").at("height").get<int>();
  if (height > 0) free.subtract({place.x, place.y - height, place.width, height});
}

// Returns true if there is a visible window in the node.
bool subtractTiled(FreePart& free, const json& node, const json& parent, int depth = 0) {
  constexpr int maxDepth = 100;
  if (depth > maxDepth) return false;
  bool isVisible = isVisibleWindow(node);
  // Only newer versions tell the opacity.
  if (isVisible && node.value("opacity", 1.0) >= 1) free.subtract(rectangleOf(node));
  for (const json& child : node.at("nodes")) {
    isVisible = subtractTiled(free, child, node, depth + 1) || isVisible;
  }
  if (isVisible) subtractTitleBars(free, node, parent);
  return isVisible;
}

OutputUse useOf(const json& output, const json& workspace) {
  const cairo_rectangle_int_t place = rectangleOf(workspace);
  FreePart free(rectangleOf(output));
  for (const json& node : workspace.at("nodes")) subtractTiled(free, node, workspace);
  // The user moves and resizes floating windows without an event that would tell, so that they
  // count only on full screen.
  for (const json& node : workspace.at("floating_nodes")) {
    if (isVisibleWindow(node) && node.value("fullscreen_mode", 0) != 0) {
      free.subtract(rectangleOf(node));
    }
  }
  return {.isFull = free.isOutside(rectangleOf(output)),
          .isWorkspaceFull = free.isOutside(place),
          .workspaceWidth = place.width,
          .workspaceHeight = place.height};
}

}  // namespace

std::map<std::string, OutputUse> readSwayTree(std::string_view text) {
  std::map<std::string, OutputUse> uses;
  try {
    const json tree = json::parse(text);
    for (const json& output : tree.at("nodes")) {
      for (const json& workspace : output.at("nodes")) {
        const std::string name = output.at("name");
        if (workspace.at("name") != output.value("current_workspace", "")) continue;
        uses[name] = useOf(output, workspace);
      }
    }
  } catch (const json::exception&) {
    return {};
  }
  return uses;
}

}  // namespace host::wayland
