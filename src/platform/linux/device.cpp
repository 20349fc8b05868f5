#include "platform/device.h"

#include <atomic>
#include <mutex>

#include "platform/linux/device.h"

namespace platform {
using namespace backend;

namespace {

std::mutex screenMutex;
std::optional<CGRect> screenBounds;
std::atomic<UIInterfaceOrientation> orientation = UIInterfaceOrientation::Portrait;
std::atomic<UIUserInterfaceIdiom> idiom = UIUserInterfaceIdiom::Phone;

}  // namespace

std::optional<CGRect> mainScreenBounds() {
  std::lock_guard lock(screenMutex);
  return screenBounds;
}

void backend::setMainScreenBounds(CGRect bounds) {
  std::lock_guard lock(screenMutex);
  screenBounds = bounds;
}

UIInterfaceOrientation statusBarOrientation() {
  return orientation;
}

void backend::setStatusBarOrientation(UIInterfaceOrientation value) {
  orientation = value;
}

std::optional<UIUserInterfaceIdiom> userInterfaceIdiom() {
  return idiom;
}

void backend::setUserInterfaceIdiom(UIUserInterfaceIdiom value) {
  idiom = value;
}

}  // namespace platform
