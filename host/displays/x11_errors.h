// What becomes of errors that the X server reports. Main thread.
#pragma once

namespace host {

// Has all of them ignored, on every connection of the process: windows of others come and go while
// they are asked about, spoken to or dragged from. To be called after any library that has a
// handler of its own was initialized.
void ignoreX11Errors();

}  // namespace host
