// Runs the home screens of the outputs that have a wallpaper of their own, in child processes.
#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include <sys/types.h>

#include "tool/device/output_devices.h"

namespace tool {

class OutputHosts {
 public:
  // Runs the home screen of the output until it is asked to end. Called in the child process.
  // Calls launched when the wallpaper can be seen. Returns the exit code.
  using Run = std::function<int(const std::string& output, const std::function<void()>& launched)>;

  // Returns the names of the outputs to run, sorted.
  using Names = std::function<std::vector<std::string>()>;

  // Starts all of them. desktop must outlive the object.
  OutputHosts(const DeviceFolder& desktop, Names names, Run run);
  // Ends all of them.
  ~OutputHosts();
  OutputHosts(const OutputHosts&) = delete;
  OutputHosts& operator=(const OutputHosts&) = delete;

  // Returns the descriptors, owned by this object, that can be read when update has something to
  // do; it also has when a child process ends.
  std::vector<int> descriptors() const { return {changes_.get(), launches_.get()}; }
  // Starts those of outputs that got a wallpaper, and notices which have launched or ended. One
  // that has ended by itself is started again when the output's folder is touched.
  void update();
  // Ends those of outputs whose wallpapers were removed. Call it when the desktop's is shown there.
  void endRemoved();

  // Returns the names of the outputs on which the wallpaper of the desktop is not needed.
  std::vector<std::string> shown() const;

 private:
  struct Host {
    // -1 if it has ended.
    pid_t process = -1;
    bool isShown = false;
  };

  void start(const std::string& name, bool isShown);
  std::set<std::string> takeChanges();
  void noteLaunches();

  const Names names_;
  const Run run_;
  platform::backend::FileDescriptor changes_;
  // A pipe in which a child process writes its output's name and a newline.
  platform::backend::FileDescriptor launches_;
  platform::backend::FileDescriptor launched_;
  std::string unread_;
  std::map<std::string, Host> hosts_;
};

}  // namespace tool
