// A small moving picture of a GIF, made by Lumora's own decoder. Main thread.
#pragma once

#include <memory>
#include <string>

#include <gtk/gtk.h>

namespace settings_window {

// Returns a new widget, which is floating. It shows the first frame as soon as that is decoded, and
// moves while the pointer is on parent or parent has the focus, unless the user has turned
// animations off. If the file cannot be decoded, it stays empty. parent must contain the widget.
GtkWidget* makeGIFPreview(const std::string& path, GtkWidget* parent);

}  // namespace settings_window
