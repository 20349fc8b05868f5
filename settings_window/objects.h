// Owners of GLib's objects, and handlers of their signals as C++ functions.
#pragma once

#include <functional>
#include <memory>

#include <glib-object.h>

namespace settings_window {

struct Unref {
  void operator()(gpointer object) const { g_object_unref(object); }
};
struct Free {
  void operator()(gpointer memory) const { g_free(memory); }
};

template <typename Type>
using Object = std::unique_ptr<Type, Unref>;
using Text = std::unique_ptr<char, Free>;

using Handler = std::function<void()>;

// Calls the handler whenever the object emits the signal, which must not expect a result. The
// object keeps the handler as long as it exists.
inline void connect(gpointer object, const char* signal, Handler handler) {
  g_signal_connect_data(
      object, signal, G_CALLBACK(+[](gpointer data) { (*static_cast<Handler*>(data))(); }),
      new Handler(std::move(handler)),
      [](gpointer data, GClosure* /*closure*/) { delete static_cast<Handler*>(data); },
      G_CONNECT_SWAPPED);
}

}  // namespace settings_window
