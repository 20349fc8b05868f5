#include "gifview/gif_view.h"

#include <utility>

#include "gifview/description_keys.h"
#include "gifview/view_settings.h"
#include "platform/autorelease_pool.h"
#include "platform/file_manager.h"
#include "platform/messaging_center.h"
#include "platform/semaphore.h"
#include "settings/notification_names.h"
#include "settings/settings_store.h"
#include "threads/exception_barrier.h"
#include "threads/main_queue_hop.h"
#include "threads/queues.h"

namespace lumora {
namespace {

using platform::CADisplayLink;
using platform::CPDistributedMessagingCenter;

}  // namespace

LWGIFView::LWGIFView(const std::string& identifier)
    : identifier_(identifier),
      location_(locationWithIdentifier(identifier)),
      extraction_(location_) {}

std::shared_ptr<LWGIFView> LWGIFView::self() {
  return std::static_pointer_cast<LWGIFView>(shared_from_this());
}

std::shared_ptr<LWGIFView> LWGIFView::initWithIdentifier(const std::string& identifier) {
  std::shared_ptr<LWGIFView> view(new LWGIFView(identifier));
  const float alpha = alphaOf(view->location_);
  hopToMainQueue([view, alpha] { view->setUp(alpha); }, deadlineFromNow());
  view->speedModifier_ = speedOf(view->location_);
  return view;
}

void LWGIFView::setUp(float alpha) {
  setBackgroundColor(platform::UIColor::clearColor());
  imageView_ = std::make_shared<platform::UIImageView>();
  imageView_->setClipsToBounds(true);
  imageView_->setAlpha(alpha);
  imageView_->setOpaque(false);
  imageView_->setAutoresizingMask(platform::UIViewAutoresizingFlexibleWidth |
                                  platform::UIViewAutoresizingFlexibleHeight);
  addSubview(imageView_);
  serveMessages();
}

void LWGIFView::serveMessages() {
  auto center = CPDistributedMessagingCenter::centerNamed(messagingCenterPrefix + identifier_);
  if (!center->doesServerExist()) center->runServerOnCurrentThread();
  auto call = [weak = std::weak_ptr(self())](void (LWGIFView::*method)()) {
    return [weak, method] {
      if (auto view = weak.lock()) stoppingExceptions([&] { (view.get()->*method)(); });
    };
  };
  center->registerForMessageName(shouldResumeMessage, call(&LWGIFView::resumeAnimation));
  center->registerForMessageName(shouldPauseMessage, call(&LWGIFView::pauseAnimation));
}

void LWGIFView::startAnimationWithGIFAtPath(const std::string& path) {
  if (!platform::fileExistsAtPath(path)) return;
  if (location_ == nullptr || !isUsed(*location_, wallpaperMode())) return;
  auto semaphore = std::make_shared<platform::DispatchSemaphore>();
  runInBackground([view = self(), path, semaphore] {
    // If the GIF cannot be read, the caller waits until its deadline; nothing else changes.
    if (view->extraction_.extract(path)) semaphore->signal();
  });
  semaphore->wait(timeLeft(deadlineFromNow()));
}

void LWGIFView::pauseAnimation() {
  displayLink_.stop();
}

// Two calls before the main queue runs create two links: the holder only keeps the second, and the
// first continues to fire.
void LWGIFView::resumeAnimation() {
  displayLink_.stop();
  addToMainQueue([view = self()] { view->startDisplayLink(); });
}

void LWGIFView::startDisplayLink() {
  isNextCycleQueued_ = false;
  displayLink_.start([weak = std::weak_ptr(self())](const CADisplayLink& fired) {
    if (auto view = weak.lock()) stoppingExceptions([&] { view->update(fired); });
  });
}

void LWGIFView::update(const CADisplayLink& link) {
  const platform::NSAutoreleasePool pool;
  const auto refresh = link.duration();
  const auto durations = extraction_.durations();
  clock_.skip(link.skippedRefreshes(), refresh);
  if (const auto due = clock_.tick(refresh, durations, speedModifier_)) {
    showFrame(*due);
    if (clock_.advance(extraction_.frameCount())) startNextCycle();
  }
  // Limits how long counting takes.
  constexpr int maxSkipped = 1000;
  link.skipRefreshes(clock_.ticksToSkip(refresh, durations, speedModifier_, maxSkipped));
}

// More than one link may end a cycle. If each of them created a new one, their number would double
// at every refresh until the main thread did nothing else, so only the first does.
void LWGIFView::startNextCycle() {
  if (std::exchange(isNextCycleQueued_, true)) return;
  resumeAnimation();
}

void LWGIFView::showFrame(std::int32_t index) {
  const auto image = platform::imageWithContentsOfFile(frameCache().framePath(index));
  imageView_->setImage(image);
  shownFrame_ = index;
  if (image) ++framesShown_;
}

void LWGIFView::setContentMode(platform::UIViewContentMode mode) {
  addToMainQueue([view = self(), mode] {
    if (view->imageView_) view->imageView_->setContentMode(mode);
  });
}

void LWGIFView::describe(platform::ViewDescription& target) const {
  UIView::describe(target);
  const FrameDurations durations = extraction_.durations();
  target.addText(description::identifier, identifier_);
  target.addFlag(description::playing, displayLink_.isRunning());
  target.addInteger(description::frameShown, shownFrame_);
  target.addInteger(description::framesInCache,
                    durations ? static_cast<long long>(durations->size()) : 0);
  target.addInteger(description::frameCount, extraction_.frameCount());
  target.addInteger(description::framesShown, framesShown_);
  target.addNumber(description::speed, speedModifier_);
  if (!imageView_) return;
  target.addNumber(description::alpha, imageView_->alpha());
  target.addInteger(description::contentMode, static_cast<int>(imageView_->contentMode()));
}

}  // namespace lumora
