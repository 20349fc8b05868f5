// Takes animated wallpapers down again. A removal detaches a view and never destroys it: the next
// installation attaches the very same one. Each call queues one operation on tweakQueue and
// returns; any thread.
#pragma once

namespace lumora {

// Takes down one location's view and deletes its GIF and frame cache; "WALLPAPER_SET" stays.
void removeSharedGIFView();
void removeLockscreenGIFView();
void removeHomescreenGIFView();

// Every view; the files stay for a later installation.
void removeGIFFromAllWallpapers();

}  // namespace lumora
