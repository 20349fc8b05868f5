// Removes animated wallpapers. A removal detaches a view without destroying it; the next
// installation attaches the same view again. Each function queues an operation on tweakQueue and
// returns. Any thread. Failures are silent.
#pragma once

namespace lumora {

// Detach one location's view and delete its GIF and frame cache. "WALLPAPER_SET" stays as it is.
void removeSharedGIFView();
void removeLockscreenGIFView();
void removeHomescreenGIFView();

// Detaches all views. The files are kept for a later installation.
void removeGIFFromAllWallpapers();

}  // namespace lumora
