// Names that the views share with the settings program and the host side.
#pragma once

namespace lumora {

// Darwin notifications, posted by the views.
constexpr auto frameFoundNotification = "kLWGIFViewFrameFoundNotification";
constexpr auto didStartAnimatingNotification = "kLWGIFViewDidStartAnimatingNotification";
constexpr auto blurDidFinishNotification = "kLWGIFViewGIFBlurDidFinish";

// Darwin notifications, observed by the views.
constexpr auto speedNeedsUpdatingNotification = "kLWGIFViewGIFSpeedNeedsUpdating";
constexpr auto alphaNeedsUpdatingNotification = "kLWGIFViewGIFAlphaNeedsUpdating";
constexpr auto blurNeedsUpdatingNotification = "kLWGIFViewGIFBlurNeedsUpdating";
constexpr auto removeUnneededViewNotification = "kLWGIFViewNeedsToRemoveUnneededViewNotification";

// Messages to a view's messaging centre, whose name is the prefix and the view's identifier.
constexpr auto messagingCenterPrefix = "com.brightfen.lumora.gifview.";
constexpr auto shouldResumeMessage = "kLWGIFViewShouldResumeNotification";
constexpr auto shouldPauseMessage = "kLWGIFViewShouldPauseNotification";

}  // namespace lumora
