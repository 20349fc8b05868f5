// The home screen, another process: what is posted to it, and what its views post. Main thread.
#pragma once

#include <string>

#include "platform/notify_center.h"
#include "preferences/changes.h"

namespace phone {

// How long a home screen that has Lumora takes at most to begin with what it was asked.
constexpr double patience = 10;

class HomeScreen {
 public:
  // Listens to the views from now on.
  HomeScreen();

  void post(const std::string& name) const { platform::DarwinNotifyCenter::post(name); }
  // Stores the change, and posts its notifications.
  void make(const preferences::Change& change) const;

  // Returns true as soon as a view has posted something, false if none does within 0.3 s.
  bool hears();

  // How often the views have posted these since listenAnew.
  int framesFound() const { return framesFound_; }
  int timesStarted() const { return timesStarted_; }
  int timesBlurred() const { return timesBlurred_; }
  void listenAnew();

 private:
  platform::DarwinNotifyCenter center_;
  int framesFound_ = 0;
  int timesStarted_ = 0;
  int timesBlurred_ = 0;
};

// Throws Failure: no home screen has begun with what it was asked. state: what has become of the
// change, in words.
[[noreturn]] void reportSilence(const std::string& state);

}  // namespace phone
