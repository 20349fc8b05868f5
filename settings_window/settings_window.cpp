#include "settings_window/settings_window.h"

#include <cmath>
#include <cstdio>
#include <iterator>
#include <utility>

#include <nlohmann/json.hpp>

#include "settings_window/gif_list.h"
#include "settings_window/gif_preview.h"

namespace settings_window {
namespace {

using nlohmann::json;

constexpr guint secondsBetweenReadings = 2;
constexpr std::size_t maxGIFs = 60;
constexpr int previewWidthInPoints = 96;
constexpr int previewHeightInPoints = 80;

// In the order of the list in the window.
constexpr const char* scalings[] = {"FILL", "FIT", "FULLSCREEN"};

// In the same way.
enum class BackdropItem { Blur, Still, Color, Picture };

json parsed(const CommandResult& result) {
  json value = json::parse(result.output, nullptr, false);
  return value.is_object() ? value : json::object();
}

std::string identifierOf(const Place& place) {
  std::string identifier = place.location;
  for (char& letter : identifier) letter = g_ascii_toupper(letter);
  return identifier;
}

std::string textOf(double value) {
  char text[G_ASCII_DTOSTR_BUF_SIZE];
  return g_ascii_formatd(text, sizeof text, "%.3g", value);
}

std::string textOf(const GdkRGBA& color) {
  constexpr float max = 255;
  const auto channel = [](float value) { return static_cast<unsigned>(std::lround(value * max)); };
  char text[16];
  std::snprintf(text, sizeof text, "#%02x%02x%02x", channel(color.red), channel(color.green),
                channel(color.blue));
  return text;
}

std::string picturesFolder() {
  const char* folder = g_get_user_special_dir(G_USER_DIRECTORY_PICTURES);
  return folder == nullptr ? g_get_home_dir() : folder;
}

// A button with a preview of the GIF.
GtkWidget* makeGridItem(const std::string& path) {
  const Text name(g_path_get_basename(path.c_str()));
  GtkWidget* item = gtk_button_new();
  gtk_accessible_update_property(GTK_ACCESSIBLE(item), GTK_ACCESSIBLE_PROPERTY_LABEL, name.get(),
                                 -1);
  gtk_widget_add_css_class(item, "flat");
  GtkWidget* preview = makeGIFPreview(path, item);
  gtk_widget_set_size_request(preview, previewWidthInPoints, previewHeightInPoints);
  gtk_widget_set_overflow(preview, GTK_OVERFLOW_HIDDEN);
  gtk_widget_add_css_class(preview, "card");
  GtkWidget* label = gtk_label_new(name.get());
  gtk_label_set_ellipsize(GTK_LABEL(label), PANGO_ELLIPSIZE_MIDDLE);
  gtk_label_set_max_width_chars(GTK_LABEL(label), 1);
  gtk_widget_add_css_class(label, "caption");
  constexpr int space = 6;
  GtkWidget* box = gtk_box_new(GTK_ORIENTATION_VERTICAL, space);
  gtk_box_append(GTK_BOX(box), preview);
  gtk_box_append(GTK_BOX(box), label);
  gtk_button_set_child(GTK_BUTTON(item), box);
  return item;
}

}  // namespace

SettingsWindow::SettingsWindow(AdwApplication* application, const CommandRunner& runner,
                               std::string samples)
    : runner_(runner),
      samples_(std::move(samples)),
      builder_(gtk_builder_new_from_resource("/com/brightfen/lumora/Settings/window.ui")),
      window_(find<AdwApplicationWindow>("window")),
      sliders_{{find<GtkRange>("speed"), "speed", "_GIF_SPEED", nullptr},
               {find<GtkRange>("alpha"), "alpha", "_GIF_ALPHA", nullptr},
               {find<GtkRange>("blur"), "blur", "_GIF_BLUR", nullptr}} {
  gtk_window_set_application(GTK_WINDOW(window_), GTK_APPLICATION(application));
  // Names of files may contain anything.
  adw_preferences_row_set_use_markup(find<AdwPreferencesRow>("state_row"), FALSE);
  connectAll();
  fillGrid();
  showState();
  runner_.run({"autostart", "status"}, [this](const CommandResult& result) {
    showSwitch("autostart", result.output.starts_with("on"));
  });
  refresh();
  timer_ = g_timeout_add_seconds(
      secondsBetweenReadings,
      [](gpointer data) -> gboolean {
        auto* self = static_cast<SettingsWindow*>(data);
        const bool isActive = gtk_window_is_active(GTK_WINDOW(self->window_)) != FALSE;
        if (isActive && !self->isReading_) self->refresh();
        return G_SOURCE_CONTINUE;
      },
      this);
}

SettingsWindow::~SettingsWindow() {
  g_source_remove(timer_);
}

void SettingsWindow::present() {
  gtk_window_present(GTK_WINDOW(window_));
}

template <typename Type>
Type* SettingsWindow::find(const char* name) const {
  return reinterpret_cast<Type*>(gtk_builder_get_object(builder_.get(), name));
}

void SettingsWindow::connectAll() {
  connect(find<GtkButton>("choose"), "clicked", [this] {
    askForFile("Choose a GIF", {"image/gif"}, [this](const std::string& path) { choose(path); });
  });
  connect(find<GtkButton>("play"), "clicked", [this] { playOrPause(); });
  connect(find<GtkButton>("drop_own"), "clicked", [this] { perform(withOutput({"remove"})); });
  connect(window_, "notify::is-active", [this] {
    fillGrid();
    refresh();
  });
  connect(find<AdwComboRow>("place"), "notify::selected", [this] {
    const auto selected = adw_combo_row_get_selected(find<AdwComboRow>("place"));
    if (isShowing_ || selected >= places_.size()) return;
    selected_ = selected;
    refresh();
  });
  connect(find<AdwComboRow>("scaling"), "notify::selected", [this] {
    const auto selected = adw_combo_row_get_selected(find<AdwComboRow>("scaling"));
    if (isShowing_ || selected >= std::size(scalings)) return;
    perform(withOutput({"scaling", place().location, scalings[selected]}));
  });
  const auto connectSwitch = [this](const char* name, const Words& on, const Words& off) {
    auto* toggle = find<GtkSwitch>(name);
    connect(toggle, "notify::active", [this, toggle, on, off] {
      if (!isShowing_) perform(gtk_switch_get_active(toggle) != FALSE ? on : off);
    });
  };
  connectSwitch("separate", {"mode", "separate"}, {"mode", "shared"});
  connectSwitch("dock", {"dock", "on"}, {"dock", "off"});
  connectSwitch("enabled", {"enable"}, {"disable"});
  connectSwitch("autostart", {"autostart", "on"}, {"autostart", "off"});
  for (Slider& slider : sliders_) connectSlider(slider);
  connectBackdrop();
  connectDrop();
}

void SettingsWindow::connectSlider(Slider& slider) {
  slider.changes = std::make_unique<LatestCommand>(runner_);
  connect(slider.range, "value-changed", [this, &slider] {
    if (isShowing_) return;
    Words words{slider.command, place().location, textOf(gtk_range_get_value(slider.range))};
    CommandRunner::Progress progress;
    if (slider.command == std::string_view("blur")) {
      words.emplace_back("--progress");
      progress = [this](int done, int total) { showProgress(static_cast<double>(done) / total); };
    }
    const auto finish = [this](const CommandResult& result) {
      showProgress(1);
      report(result);
      refresh();
    };
    slider.changes->run(withOutput(std::move(words)), finish, progress);
  });
}

void SettingsWindow::connectDrop() {
  GtkDropTarget* target = gtk_drop_target_new(G_TYPE_FILE, GDK_ACTION_COPY);
  const auto take =
      +[](GtkDropTarget*, const GValue* value, double, double, gpointer data) -> gboolean {
    const Text path(g_file_get_path(G_FILE(g_value_get_object(value))));
    if (!path) return FALSE;
    static_cast<SettingsWindow*>(data)->choose(path.get());
    return TRUE;
  };
  g_signal_connect(target, "drop", G_CALLBACK(take), this);
  gtk_widget_add_controller(GTK_WIDGET(window_), GTK_EVENT_CONTROLLER(target));
}

void SettingsWindow::fillGrid() {
  auto paths = listGIFs(picturesFolder(), samples_, maxGIFs);
  gtk_widget_set_visible(find<GtkWidget>("pictures"), !paths.empty());
  if (paths == gifs_) return;
  gifs_ = std::move(paths);
  auto* grid = find<GtkFlowBox>("grid");
  while (GtkFlowBoxChild* cell = gtk_flow_box_get_child_at_index(grid, 0)) {
    gtk_flow_box_remove(grid, GTK_WIDGET(cell));
  }
  for (const std::string& path : gifs_) {
    GtkWidget* item = makeGridItem(path);
    connect(item, "clicked", [this, path] { choose(path); });
    gtk_flow_box_append(grid, item);
    // The button is reached by the Tab key, not the cell around it as well.
    gtk_widget_set_focusable(gtk_widget_get_parent(item), FALSE);
  }
}

void SettingsWindow::refresh() {
  isOutdated_ = isReading_;
  if (std::exchange(isReading_, true)) return;
  runner_.run({"status", "--json"},
              [this](const CommandResult& result) { readPlace(parsed(result)); });
}

void SettingsWindow::readPlace(const json& status) {
  const auto finish = [this, status](const json& ofPlace) {
    state_ = WallpaperState(status, ofPlace);
    showPlaces();
    readSettings();
  };
  if (place().output.empty() || !place().isOwn) return finish(status);
  runner_.run(withOutput({"status", "--json"}),
              [finish](const CommandResult& result) { finish(parsed(result)); });
}

void SettingsWindow::readSettings() {
  const Words words{"settings", "--json"};
  runner_.run(place().isOwn ? withOutput(words) : words, [this](const CommandResult& result) {
    isReading_ = false;
    // What was read may be from before a change. The end of the change refreshes.
    if (changesUnderway_ > 0) return;
    if (isOutdated_) return refresh();
    showState();
    if (result.exitCode == 0) showSettings(parsed(result));
  });
}

void SettingsWindow::showPlaces() {
  const std::vector<Place> places = state_.places();
  if (places == places_) return;
  const Place before = place();
  selected_ = 0;
  for (std::size_t index = 0; index < places.size(); ++index) {
    if (places[index].name == before.name) selected_ = index;
  }
  places_ = places;
  isShowing_ = true;
  std::vector<const char*> names;
  for (const Place& each : places_) names.push_back(each.name.c_str());
  names.push_back(nullptr);
  auto* list = find<GtkStringList>("place_names");
  gtk_string_list_splice(list, 0, g_list_model_get_n_items(G_LIST_MODEL(list)), names.data());
  adw_combo_row_set_selected(find<AdwComboRow>("place"), static_cast<guint>(selected_));
  isShowing_ = false;
}

void SettingsWindow::showState() {
  auto* row = find<AdwPreferencesRow>("state_row");
  adw_preferences_row_set_title(row, state_.title(place()).c_str());
  adw_action_row_set_subtitle(ADW_ACTION_ROW(row), state_.description(place()).c_str());
  const bool isPhone = state_.isRunning() && !state_.isDesktop();
  const auto show = [this](const char* name, bool isShown) {
    gtk_widget_set_visible(find<GtkWidget>(name), isShown);
  };
  show("place", places_.size() > 1);
  show("separate_row", isPhone);
  show("dock_row", isPhone);
  show("own_row", !place().output.empty() && place().isOwn);
  const bool canPlay = state_.hasGIF(place()) && !isPhone;
  show("play", canPlay);
  const char* label = !state_.isRunning()              ? "Start"
                      : state_.isPausedByHand(place()) ? "Resume"
                                                       : "Pause";
  gtk_button_set_label(find<GtkButton>("play"), label);
  showBackdrop();
  gtk_widget_set_sensitive(find<GtkWidget>("look"), place().isOwn);
}

void SettingsWindow::showSettings(const json& settings) {
  isShowing_ = true;
  const std::string identifier = identifierOf(place());
  for (const Slider& slider : sliders_) {
    // What the user is just changing stays.
    if (slider.changes->isRunning()) continue;
    gtk_range_set_value(slider.range, settings.value(identifier + slider.key, 0.0));
  }
  const std::string scaling = settings.value(identifier + "_SCALING_MODE", "");
  for (guint index = 0; index < std::size(scalings); ++index) {
    if (scaling == scalings[index]) {
      adw_combo_row_set_selected(find<AdwComboRow>("scaling"), index);
    }
  }
  isShowing_ = false;
  showSwitch("dock", settings.value("DOCK_ENABLED", true));
  showSwitch("enabled", settings.value("ENABLED", true));
  showSwitch("separate", state_.isSeparate());
}

// Leaves a switch alone that is right: to set it would cancel a change by the user, which takes
// effect after an animation.
void SettingsWindow::showSwitch(const char* name, bool isOn) {
  auto* toggle = find<GtkSwitch>(name);
  if ((gtk_switch_get_active(toggle) != FALSE) == isOn) return;
  isShowing_ = true;
  gtk_switch_set_active(toggle, isOn ? TRUE : FALSE);
  isShowing_ = false;
}

void SettingsWindow::showProgress(double fraction) {
  auto* bar = find<GtkProgressBar>("progress");
  gtk_progress_bar_set_fraction(bar, std::min(fraction, 1.0));
  gtk_widget_set_visible(GTK_WIDGET(bar), fraction < 1);
}

void SettingsWindow::askForFile(const char* title, const std::vector<const char*>& mimeTypes,
                                std::function<void(const std::string&)> chosen) {
  GtkFileChooserNative* dialog = gtk_file_chooser_native_new(
      title, GTK_WINDOW(window_), GTK_FILE_CHOOSER_ACTION_OPEN, "_Choose", "_Cancel");
  GtkFileFilter* filter = gtk_file_filter_new();
  for (const char* type : mimeTypes) gtk_file_filter_add_mime_type(filter, type);
  gtk_file_chooser_add_filter(GTK_FILE_CHOOSER(dialog), filter);
  g_object_unref(filter);
  const Object<GFile> folder(g_file_new_for_path(picturesFolder().c_str()));
  gtk_file_chooser_set_current_folder(GTK_FILE_CHOOSER(dialog), folder.get(), nullptr);
  using Chosen = std::function<void(const std::string&)>;
  const auto answer = +[](GtkNativeDialog* asked, int response, gpointer data) {
    const std::unique_ptr<Chosen> take(static_cast<Chosen*>(data));
    const Object<GFile> file(gtk_file_chooser_get_file(GTK_FILE_CHOOSER(asked)));
    const Text path(file ? g_file_get_path(file.get()) : nullptr);
    if (response == GTK_RESPONSE_ACCEPT && path) (*take)(path.get());
    g_object_unref(asked);
  };
  g_signal_connect(dialog, "response", G_CALLBACK(answer), new Chosen(std::move(chosen)));
  gtk_native_dialog_show(GTK_NATIVE_DIALOG(dialog));
}

void SettingsWindow::connectBackdrop() {
  auto* kind = find<AdwComboRow>("backdrop");
  auto* color = find<GtkColorChooser>("color");
  const auto useColor = [this, color] {
    GdkRGBA chosen;
    gtk_color_chooser_get_rgba(color, &chosen);
    perform({"backdrop", textOf(chosen)});
  };
  connect(kind, "notify::selected", [this, kind, useColor] {
    if (isShowing_) return;
    const auto selected = static_cast<BackdropItem>(adw_combo_row_get_selected(kind));
    if (selected == BackdropItem::Blur) perform({"backdrop", "blur"});
    if (selected == BackdropItem::Still) perform({"backdrop", "still"});
    if (selected == BackdropItem::Color) useColor();
    if (selected != BackdropItem::Picture) return;
    askForFile("Choose a picture", {"image/png", "image/gif"}, [this](const std::string& path) {
      perform({"backdrop", path});
    });
    // Until then, and if there is none, the old one stays.
    showBackdrop();
  });
  connect(color, "color-set", useColor);
}

void SettingsWindow::showBackdrop() {
  const std::string backdrop = state_.backdrop();
  GdkRGBA color;
  const bool isColor = backdrop.starts_with('#') && gdk_rgba_parse(&color, backdrop.c_str());
  const BackdropItem item = isColor               ? BackdropItem::Color
                            : backdrop == "blur"  ? BackdropItem::Blur
                            : backdrop == "still" ? BackdropItem::Still
                                                  : BackdropItem::Picture;
  isShowing_ = true;
  adw_combo_row_set_selected(find<AdwComboRow>("backdrop"), static_cast<guint>(item));
  if (isColor) gtk_color_chooser_set_rgba(find<GtkColorChooser>("color"), &color);
  isShowing_ = false;
  gtk_widget_set_visible(find<GtkWidget>("backdrop"), state_.isDesktop());
  gtk_widget_set_visible(find<GtkWidget>("color_row"), state_.isDesktop() && isColor);
}

void SettingsWindow::choose(const std::string& path) {
  if (state_.isRunning()) return setGIF(path);
  runner_.run({"run", "--restore", "--background"}, [this, path](const CommandResult& result) {
    report(result);
    if (result.exitCode == 0) setGIF(path);
  });
}

void SettingsWindow::setGIF(const std::string& path) {
  showProgress(0);
  runner_.run(
      withOutput({"set", place().location, path, "--progress"}),
      [this](const CommandResult& result) {
        showProgress(1);
        report(result);
        refresh();
      },
      [this](int done, int total) { showProgress(static_cast<double>(done) / total); });
}

void SettingsWindow::playOrPause() {
  if (state_.isRunning()) {
    perform(withOutput({"toggle"}));
  } else {
    perform({"run", "--restore", "--background"});
  }
}

void SettingsWindow::perform(const Words& words) {
  ++changesUnderway_;
  runner_.run(words, [this](const CommandResult& result) {
    --changesUnderway_;
    report(result);
    refresh();
  });
}

void SettingsWindow::report(const CommandResult& result) {
  if (result.exitCode == 0) return;
  std::string text = result.problem.empty() ? "lumora has failed" : result.problem;
  const Text escaped(g_markup_escape_text(text.c_str(), -1));
  adw_toast_overlay_add_toast(find<AdwToastOverlay>("toasts"), adw_toast_new(escaped.get()));
}

Words SettingsWindow::withOutput(Words words) const {
  if (!place().output.empty()) words.insert(words.end(), {"--output", place().output});
  return words;
}

}  // namespace settings_window
