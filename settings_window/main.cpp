// lumora-settings, the window for choosing and adjusting the wallpaper.

#include <filesystem>
#include <memory>
#include <string>

#include <adwaita.h>

#include "settings_window/command_runner.h"
#include "settings_window/settings_window.h"

namespace {

namespace fs = std::filesystem;
using settings_window::CommandRunner;
using settings_window::SettingsWindow;

constexpr auto identifier = "com.brightfen.lumora.Settings";

fs::path programs() {
  return fs::read_symlink("/proc/self/exe").parent_path();
}

// Lives as long as the application.
struct Program {
  std::string root;
  std::unique_ptr<CommandRunner> runner;
  std::unique_ptr<SettingsWindow> window;
};

void activate(GtkApplication* application, gpointer data) {
  auto* program = static_cast<Program*>(data);
  if (!program->window) {
    program->runner = std::make_unique<CommandRunner>(programs() / "lumora", program->root);
    const fs::path samples = programs() / LUMORA_SAMPLES_FROM_PROGRAMS;
    program->window =
        std::make_unique<SettingsWindow>(ADW_APPLICATION(application), *program->runner, samples);
  }
  program->window->present();
}

// Returns -1 to go on.
int readOptions(GApplication* application, GVariantDict* options, gpointer data) {
  if (g_variant_dict_contains(options, "version") != FALSE) {
    g_print("lumora-settings %s\n", LUMORA_VERSION);
    return 0;
  }
  const char* root = nullptr;
  if (g_variant_dict_lookup(options, "root", "^&ay", &root) != FALSE) {
    static_cast<Program*>(data)->root = fs::absolute(root);
    // A window for another folder is another program.
    g_application_set_flags(application, G_APPLICATION_NON_UNIQUE);
  }
  return -1;
}

}  // namespace

int main(int argc, char** argv) {
  Program program;
  AdwApplication* application = adw_application_new(identifier, G_APPLICATION_DEFAULT_FLAGS);
  auto* base = G_APPLICATION(application);
  g_application_add_main_option(base, "root", 0, G_OPTION_FLAG_NONE, G_OPTION_ARG_FILENAME,
                                "folder that holds everything about one home screen", "DIR");
  g_application_add_main_option(base, "version", 'V', G_OPTION_FLAG_NONE, G_OPTION_ARG_NONE,
                                "print the version", nullptr);
  g_application_set_option_context_summary(
      base, "A window for choosing and adjusting animated wallpapers.");
  g_signal_connect(application, "handle-local-options", G_CALLBACK(readOptions), &program);
  g_signal_connect(application, "activate", G_CALLBACK(activate), &program);
  const int code = g_application_run(base, argc, argv);
  program.window.reset();
  g_object_unref(application);
  return code;
}
