#include "settings_window/gif_preview.h"

#include <cmath>
#include <utility>
#include <vector>

#include "settings_window/objects.h"
#include "settings_window/preview_frames.h"

namespace settings_window {
namespace {

constexpr int maxFrames = 60;

bool mayMove() {
  gboolean isAllowed = TRUE;
  g_object_get(gtk_settings_get_default(), "gtk-enable-animations", &isAllowed, nullptr);
  return isAllowed != FALSE;
}

// What a decoding thread gets and gives.
struct Decoding {
  std::string path;
  int count;
  std::vector<PreviewFrame> frames;
};

class Preview {
 public:
  explicit Preview(std::string path)
      : path_(std::move(path)),  // The button around it has a name already.
        picture_(GTK_PICTURE(g_object_new(GTK_TYPE_PICTURE, "accessible-role",
                                          GTK_ACCESSIBLE_ROLE_PRESENTATION, nullptr))) {
    gtk_picture_set_content_fit(picture_, GTK_CONTENT_FIT_COVER);
    g_object_set_data_full(G_OBJECT(picture_), "preview", this,
                           [](gpointer self) { delete static_cast<Preview*>(self); });
    decode(1);
  }
  ~Preview() { stop(); }
  Preview(const Preview&) = delete;
  Preview& operator=(const Preview&) = delete;

  GtkWidget* widget() const { return GTK_WIDGET(picture_); }

  // Reference counts, because pointer and focus may both be there.
  void attend() {
    if (++attention_ > 1 || !mayMove()) return;
    if (std::exchange(wantsAll_, true)) return showNext();
    decode(maxFrames);
  }
  void ignore() {
    if (attention_ > 0) --attention_;
    if (attention_ == 0) stop();
  }

 private:
  void decode(int count) {
    GTask* task = g_task_new(picture_, nullptr, onDecoded, nullptr);
    g_task_set_task_data(task, new Decoding{path_, count, {}},
                         [](gpointer data) { delete static_cast<Decoding*>(data); });
    g_task_run_in_thread(task, [](GTask*, gpointer, gpointer data, GCancellable*) {
      auto* decoding = static_cast<Decoding*>(data);
      decoding->frames = previewFrames(decoding->path, decoding->count);
    });
    g_object_unref(task);
  }

  static void onDecoded(GObject* picture, GAsyncResult* result, gpointer /*data*/) {
    auto* self = static_cast<Preview*>(g_object_get_data(picture, "preview"));
    auto* decoding = static_cast<Decoding*>(g_task_get_task_data(G_TASK(result)));
    self->frames_ = std::move(decoding->frames);
    self->next_ = 0;
    if (self->frames_.empty()) return;
    self->showNext();
  }

  void showNext() {
    stop();
    if (frames_.empty()) return;
    const PreviewFrame& frame = frames_[next_];
    gtk_picture_set_paintable(picture_, GDK_PAINTABLE(frame.texture.get()));
    if (attention_ == 0 || frames_.size() < 2) return;
    next_ = (next_ + 1) % frames_.size();
    const auto milliseconds = std::chrono::round<std::chrono::milliseconds>(frame.delay).count();
    timer_ = g_timeout_add(static_cast<guint>(milliseconds), onTime, this);
  }

  static gboolean onTime(gpointer data) {
    auto* self = static_cast<Preview*>(data);
    self->timer_ = 0;
    self->showNext();
    return G_SOURCE_REMOVE;
  }

  void stop() {
    if (timer_ != 0) g_source_remove(std::exchange(timer_, 0));
  }

  const std::string path_;
  GtkPicture* const picture_;
  std::vector<PreviewFrame> frames_;
  std::size_t next_ = 0;
  int attention_ = 0;
  bool wantsAll_ = false;
  guint timer_ = 0;
};

}  // namespace

GtkWidget* makeGIFPreview(const std::string& path, GtkWidget* parent) {
  auto* preview = new Preview(path);
  GtkEventController* pointer = gtk_event_controller_motion_new();
  GtkEventController* focus = gtk_event_controller_focus_new();
  for (GtkEventController* controller : {pointer, focus}) {
    connect(controller, "enter", [preview] { preview->attend(); });
    connect(controller, "leave", [preview] { preview->ignore(); });
    gtk_widget_add_controller(parent, controller);
  }
  return preview->widget();
}

}  // namespace settings_window
