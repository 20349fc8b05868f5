// Every name that the library shares with the settings program, as a Darwin notification, or with
// its own views, as a message. None carries a payload: what there is to know is in the settings
// file.
#pragma once

namespace lumora {

// Posted by the settings program, observed by the host side.
namespace control {
// A newly chosen GIF is to be taken in.
constexpr auto wallpaperNeedsUpdating = "com.brightfen.lumora.wallpaperNeedsUpdating";
// The views are to be installed again.
constexpr auto updateWallpaper = "com.brightfen.lumora.updateWallpaper";
// The same, and what is shown is to play.
constexpr auto updateAnimating = "com.brightfen.lumora.updateAnimating";
// Views are to be taken down.
constexpr auto removeGIFFromAllWallpapers = "com.brightfen.lumora.removeGIFFromAllWallpapers";
constexpr auto removeSharedGIFView = "com.brightfen.lumora.removeSharedGIFView";
constexpr auto removeLockscreenGIFView = "com.brightfen.lumora.removeLockscreenGIFView";
constexpr auto removeHomescreenGIFView = "com.brightfen.lumora.removeHomescreenGIFView";
}  // namespace control

// Posted by the settings program, observed by the views.
constexpr auto speedNeedsUpdatingNotification = "kLWGIFViewGIFSpeedNeedsUpdating";
constexpr auto alphaNeedsUpdatingNotification = "kLWGIFViewGIFAlphaNeedsUpdating";
constexpr auto blurNeedsUpdatingNotification = "kLWGIFViewGIFBlurNeedsUpdating";
constexpr auto removeUnneededViewNotification = "kLWGIFViewNeedsToRemoveUnneededViewNotification";

// Posted by the views.
constexpr auto frameFoundNotification = "kLWGIFViewFrameFoundNotification";
constexpr auto didStartAnimatingNotification = "kLWGIFViewDidStartAnimatingNotification";
constexpr auto blurDidFinishNotification = "kLWGIFViewGIFBlurDidFinish";

// Messages to a view's messaging center, whose name is the prefix and the view's identifier.
constexpr auto messagingCenterPrefix = "com.brightfen.lumora.gifview.";
constexpr auto shouldResumeMessage = "kLWGIFViewShouldResumeNotification";
constexpr auto shouldPauseMessage = "kLWGIFViewShouldPauseNotification";

}  // namespace lumora
