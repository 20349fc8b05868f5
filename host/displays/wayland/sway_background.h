// The background of sway's own configuration. Any thread.
#pragma once

namespace host::wayland {

// Returns true if the compositor of this session is sway and has started swaybg, which shows the
// background that sway's configuration names. The usual configuration names one. Up to version 1.8
// sway draws it in front of a surface that another program adds to the same layer later.
bool hasSwayBackground();

}  // namespace host::wayland
