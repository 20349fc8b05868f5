// The home screen, another process: what is posted to it, and what its views post. Main thread.
#pragma once

#include <string>

#include "platform/notify_center.h"
#include "preferences/changes.h"

namespace phone {

// How many seconds a home screen that has Lumora takes at most to begin with what it was asked.
constexpr double patience = 10;

// Stores the change, and posts its notifications to the home screen.
void make(const preferences::Change& change);

// What the views have posted since this object was made.
class Views {
 public:
  Views();

  // Returns true as soon as a view has posted something, false if none does within 0.3 s.
  bool hear();
  // Returns once no view has posted anything for two seconds: none makes frames then. Throws
  // Failure if they do not come to rest within the limit, in seconds.
  void awaitRest(double limit);

  int framesFound() const { return framesFound_; }
  bool haveBlurred() const { return haveBlurred_; }

 private:
  platform::DarwinNotifyCenter center_;
  int heard_ = 0;
  int framesFound_ = 0;
  bool haveBlurred_ = false;
};

// Throws Failure: no home screen has begun with what it was asked. state: what has become of the
// change, in words.
[[noreturn]] void reportSilence(const std::string& state);

}  // namespace phone
