#include "phone/home_screen.h"

#include <functional>

#include "command_line/failure.h"
#include "phone/stopwatch.h"
#include "platform/ios/run_loop.h"
#include "settings/notification_names.h"

namespace phone {

void make(const preferences::Change& change) {
  store(change);
  for (const char* name : change.notifications) platform::DarwinNotifyCenter::post(name);
}

Views::Views() {
  const auto onName = [this](const char* name, std::function<void()> note) {
    center_.addObserver(this, name, [this, note](const std::string&) {
      ++heard_;
      note();
    });
  };
  onName(lumora::frameFoundNotification, [this] { ++framesFound_; });
  // It matters to hear() alone.
  onName(lumora::didStartAnimatingNotification, [] {});
  onName(lumora::blurDidFinishNotification, [this] { haveBlurred_ = true; });
}

bool Views::hear() {
  constexpr double moment = 0.3;
  const int before = heard_;
  platform::backend::runMainLoop(moment);
  return heard_ != before;
}

void Views::awaitRest(double limit) {
  constexpr double rest = 2;
  const Stopwatch waiting;
  for (Stopwatch sinceLast; sinceLast.seconds() < rest;) {
    if (hear()) sinceLast = Stopwatch();
    if (waiting.seconds() > limit + rest) {
      throw command_line::Failure(
          "the home screen has not finished its work before the timeout; nothing was changed");
    }
  }
}

void reportSilence(const std::string& state) {
  throw command_line::Failure(
      "no home screen with Lumora answers; " + state + "; restart the home screen, then try again",
      command_line::ExitCode::NoHost);
}

}  // namespace phone
