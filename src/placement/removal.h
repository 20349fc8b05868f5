// Removes animated wallpapers. A removal detaches a view without destroying it; the next
// installation attaches the same view again. Each function queues an operation on tweakQueue and
// returns. Any thread. Failures are silent.
#pragma once

namespace lumora {

// Detach one location's view, delete its GIF and frame cache, and store "FALSE" under the
// location's own key. "WALLPAPER_SET" stays as it is.
void removeSharedGIFView();
void removeLockscreenGIFView();
void removeHomescreenGIFView();

// Detaches all views and stores "FALSE" under "WALLPAPER_SET" and each location's key. The files
// are kept for a later installation.
void removeGIFFromAllWallpapers();

}  // namespace lumora
