// The names of all Darwin notifications and messages. None has a payload: receivers read the
// settings instead.
#pragma once

namespace lumora {

// Posted by the settings program, observed by the library in the host.
namespace control {
// Take in a newly chosen GIF.
constexpr auto wallpaperNeedsUpdating = "com.brightfen.lumora.wallpaperNeedsUpdating";
// Install the views again.
constexpr auto updateWallpaper = "com.brightfen.lumora.updateWallpaper";
// Install the views again and resume the visible ones.
constexpr auto updateAnimating = "com.brightfen.lumora.updateAnimating";
// Remove views.
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

// Posted by the views, observed by the settings program.
// A frame of the GIF has been decoded, to make the frames or to rewrite them.
constexpr auto frameFoundNotification = "kLWGIFViewFrameFoundNotification";
// All frames that can be made are made. Playback need not have started.
constexpr auto didStartAnimatingNotification = "kLWGIFViewDidStartAnimatingNotification";
// The rewriting of the frames with another blur has ended.
constexpr auto blurDidFinishNotification = "kLWGIFViewGIFBlurDidFinish";

// All of the above, for programs that show what is posted.
constexpr const char* allNotifications[] = {
    control::wallpaperNeedsUpdating,  control::updateWallpaper,
    control::updateAnimating,         control::removeGIFFromAllWallpapers,
    control::removeSharedGIFView,     control::removeLockscreenGIFView,
    control::removeHomescreenGIFView, speedNeedsUpdatingNotification,
    alphaNeedsUpdatingNotification,   blurNeedsUpdatingNotification,
    removeUnneededViewNotification,   frameFoundNotification,
    didStartAnimatingNotification,    blurDidFinishNotification,
};

// Messages to a view. Its messaging center's name is the prefix followed by the view's identifier.
constexpr auto messagingCenterPrefix = "com.brightfen.lumora.gifview.";
constexpr auto shouldResumeMessage = "kLWGIFViewShouldResumeNotification";
constexpr auto shouldPauseMessage = "kLWGIFViewShouldPauseNotification";

}  // namespace lumora
