// Makes GIFs and WebM videos of recordings with ffmpeg, which is optional.
#pragma once

#include <filesystem>
#include <functional>

#include "tool/support/recording.h"

namespace tool {

enum class VideoFormat { Gif, WebM };

// Throws Failure, with the way out, if ffmpeg is not on the PATH.
void requireEncoder();

// Makes a file of the recording, whose list must have been written. Files go to the folder, and so
// does the result, whose path is returned. The same pictures and times give the same bytes. show is
// called with the number of pictures that are done. Ends ffmpeg and throws Failure if isInterrupted
// returns true, and throws Failure with ffmpeg's reason if it fails.
std::filesystem::path encode(const Recording& recording, VideoFormat format,
                             const std::filesystem::path& folder,
                             const std::function<void(int done)>& show,
                             const std::function<bool()>& isInterrupted);

}  // namespace tool
