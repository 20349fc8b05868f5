#include "phone/home_screen.h"

#include "command_line/failure.h"
#include "platform/ios/run_loop.h"
#include "settings/notification_names.h"

namespace phone {

HomeScreen::HomeScreen() {
  const auto count = [this](const char* name, int& counter) {
    center_.addObserver(this, name, [&counter](const std::string&) { ++counter; });
  };
  count(lumora::frameFoundNotification, framesFound_);
  count(lumora::didStartAnimatingNotification, timesStarted_);
  count(lumora::blurDidFinishNotification, timesBlurred_);
}

void HomeScreen::make(const preferences::Change& change) const {
  store(change);
  for (const char* name : change.notifications) post(name);
}

bool HomeScreen::hears() {
  constexpr double moment = 0.3;
  const auto heard = [this] { return framesFound_ + timesStarted_ + timesBlurred_; };
  const int before = heard();
  platform::backend::runMainLoop(moment);
  return heard() != before;
}

void HomeScreen::listenAnew() {
  framesFound_ = timesStarted_ = timesBlurred_ = 0;
}

void reportSilence(const std::string& state) {
  throw command_line::Failure(
      "no home screen with Lumora answers; " + state + "; restart the home screen, then try again",
      command_line::ExitCode::NoHost);
}

}  // namespace phone
