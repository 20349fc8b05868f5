#include "settings_window/command_runner.h"

#include <memory>
#include <utility>

#include <gio/gio.h>
#include <nlohmann/json.hpp>

#include "settings_window/objects.h"

namespace settings_window {
namespace {

constexpr std::string_view nameInMessages = "lumora: ";

std::string withoutName(const std::string& text) {
  const std::string line = text.substr(0, text.find('\n'));
  return line.starts_with(nameInMessages) ? line.substr(nameInMessages.size()) : line;
}

// A command that is being performed. It deletes itself after it has reported its end.
class Running {
 public:
  Running(CommandRunner::Done done, CommandRunner::Progress progress)
      : done_(std::move(done)), progress_(std::move(progress)) {}

  void start(std::vector<const char*> words) {
    words.push_back(nullptr);
    GError* error = nullptr;
    process_.reset(g_subprocess_newv(words.data(),
                                     static_cast<GSubprocessFlags>(G_SUBPROCESS_FLAGS_STDOUT_PIPE |
                                                                   G_SUBPROCESS_FLAGS_STDERR_PIPE),
                                     &error));
    if (!process_) return failToStart(error);
    open_ = 3;
    out_.reset(g_data_input_stream_new(g_subprocess_get_stdout_pipe(process_.get())));
    err_.reset(g_data_input_stream_new(g_subprocess_get_stderr_pipe(process_.get())));
    readOut();
    readErr();
    g_subprocess_wait_async(process_.get(), nullptr, onExit, this);
  }

 private:
  // The end is reported later, as that of every command.
  void failToStart(GError* error) {
    result_ = {1, "", std::string("cannot start lumora: ") + error->message};
    g_error_free(error);
    open_ = 1;
    g_idle_add_once([](gpointer self) { static_cast<Running*>(self)->endOne(); }, this);
  }

  void readOut() {
    g_data_input_stream_read_line_async(out_.get(), G_PRIORITY_DEFAULT, nullptr, onOut, this);
  }
  void readErr() {
    g_data_input_stream_read_line_async(err_.get(), G_PRIORITY_DEFAULT, nullptr, onErr, this);
  }

  static void onOut(GObject* /*stream*/, GAsyncResult* result, gpointer data) {
    auto* self = static_cast<Running*>(data);
    const Text line(
        g_data_input_stream_read_line_finish(self->out_.get(), result, nullptr, nullptr));
    if (!line) return self->endOne();
    self->take(line.get());
    self->readOut();
  }

  static void onErr(GObject* /*stream*/, GAsyncResult* result, gpointer data) {
    auto* self = static_cast<Running*>(data);
    const Text line(
        g_data_input_stream_read_line_finish(self->err_.get(), result, nullptr, nullptr));
    if (!line) return self->endOne();
    self->problem_ += std::string(line.get()) + '\n';
    self->readErr();
  }

  static void onExit(GObject* /*process*/, GAsyncResult* result, gpointer data) {
    auto* self = static_cast<Running*>(data);
    g_subprocess_wait_finish(self->process_.get(), result, nullptr);
    self->endOne();
  }

  void take(const std::string& line) {
    const auto step = progress_ ? nlohmann::json::parse(line, nullptr, false) : nlohmann::json();
    if (step.is_object() && step.contains("total")) {
      progress_(step.value("done", 0), step.value("total", 1));
    } else {
      result_.output += line + '\n';
    }
  }

  // One of the two streams or the process has ended.
  void endOne() {
    if (--open_ > 0) return;
    const std::unique_ptr<Running> self(this);
    if (process_) {
      const bool hasExited = g_subprocess_get_if_exited(process_.get()) != FALSE;
      result_.exitCode = hasExited ? g_subprocess_get_exit_status(process_.get()) : 1;
      if (result_.exitCode != 0) result_.problem = withoutName(problem_);
    }
    done_(result_);
  }

  const CommandRunner::Done done_;
  const CommandRunner::Progress progress_;
  Object<GSubprocess> process_;
  Object<GDataInputStream> out_;
  Object<GDataInputStream> err_;
  CommandResult result_;
  std::string problem_;
  int open_ = 0;
};

}  // namespace

CommandRunner::CommandRunner(std::string program, std::string root)
    : program_(std::move(program)), root_(std::move(root)) {}

void CommandRunner::run(const Words& words, Done done, Progress progress) const {
  std::vector<const char*> line{program_.c_str()};
  if (!root_.empty()) line.insert(line.end(), {"--root", root_.c_str()});
  for (const std::string& word : words) line.push_back(word.c_str());
  auto* running = new Running(std::move(done), std::move(progress));
  running->start(std::move(line));
}

void LatestCommand::run(Words words, CommandRunner::Done done, CommandRunner::Progress progress) {
  next_ = std::move(words);
  done_ = std::move(done);
  progress_ = std::move(progress);
  if (!isRunning_) start();
}

void LatestCommand::start() {
  isRunning_ = true;
  const auto finish = [this, done = done_](const CommandResult& result) {
    isRunning_ = false;
    if (!next_.empty()) return start();
    done(result);
  };
  runner_.run(std::exchange(next_, {}), finish, progress_);
}

}  // namespace settings_window
