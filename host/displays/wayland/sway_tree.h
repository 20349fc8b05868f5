// Reads which outputs the windows of a sway session cover, from the tree that its IPC describes.
#pragma once

#include <map>
#include <string>
#include <string_view>

namespace host::wayland {

// How the windows that can be seen use an output. A window counts if the compositor draws it
// opaque; what the program itself leaves translucent is not known.
struct OutputUse {
  // True if they cover all of it.
  bool isFull = false;
  // True if they cover all of the workspace, which is the output without bars and outer gaps.
  bool isWorkspaceFull = false;
  // The workspace's size in logical pixels.
  int workspaceWidth = 0;
  int workspaceHeight = 0;

  friend bool operator==(const OutputUse&, const OutputUse&) = default;
};

// Returns the outputs by name, or none if the text is not the answer to GET_TREE.
std::map<std::string, OutputUse> readSwayTree(std::string_view text);

}  // namespace host::wayland
