// The window: shows the state of the wallpapers and performs what the user changes. Main thread.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <adwaita.h>

#include "settings_window/command_runner.h"
#include "settings_window/objects.h"
#include "settings_window/wallpaper_state.h"

namespace settings_window {

class SettingsWindow {
 public:
  // runner must outlive the main loop, and so must this object. samples: the folder of the
  // installed GIFs.
  SettingsWindow(AdwApplication* application, const CommandRunner& runner, std::string samples);
  ~SettingsWindow();
  SettingsWindow(const SettingsWindow&) = delete;
  SettingsWindow& operator=(const SettingsWindow&) = delete;

  void present();

 private:
  // A slider of a setting that each location has.
  struct Slider {
    GtkRange* range;
    const char* command;
    // Follows the location's identifier in the settings file.
    const char* key;
    std::unique_ptr<LatestCommand> changes;
  };

  template <typename Type>
  Type* find(const char* name) const;
  void connectAll();
  void connectSlider(Slider& slider);
  void connectDrop();
  // Shows the GIFs in the user's folder for pictures, if they are others than before.
  void fillGrid();

  // Read the state again, and show it.
  void refresh();
  void readPlace(const nlohmann::json& status);
  void readSettings();
  void showState();
  void showPlaces();
  void showSettings(const nlohmann::json& settings);
  void showSwitch(const char* name, bool isOn);
  void showProgress(double fraction);

  // Lets the user choose a file of one of these types. chosen is not called if there is none.
  void askForFile(const char* title, const std::vector<const char*>& mimeTypes,
                  std::function<void(const std::string&)> chosen);
  void connectBackdrop();
  void showBackdrop();
  void choose(const std::string& path);
  void setGIF(const std::string& path);
  void playOrPause();
  // Performs a command for the place that is selected, and refreshes.
  void perform(const Words& words);
  void report(const CommandResult& result);
  Words withOutput(Words words) const;
  const Place& place() const { return places_[selected_]; }

  const CommandRunner& runner_;
  const std::string samples_;
  std::vector<std::string> gifs_;
  Object<GtkBuilder> builder_;
  AdwApplicationWindow* window_;
  WallpaperState state_;
  std::vector<Place> places_{Place{.name = "All outputs"}};
  std::size_t selected_ = 0;
  Slider sliders_[3];
  // True while widgets are set to what was read, which is not a change by the user.
  bool isShowing_ = false;
  bool isReading_ = false;
  // True if something may have changed since the reading under way began.
  bool isOutdated_ = false;
  int changesUnderway_ = 0;
  guint timer_ = 0;
};

}  // namespace settings_window
