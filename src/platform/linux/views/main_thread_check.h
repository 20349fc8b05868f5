// Views are changed on the main thread only. On the device a change elsewhere corrupts what is
// drawn, sometimes; here it works, so it is counted for whoever looks. Any thread.
#pragma once

namespace platform::backend {

void expectMainThread();
int timesOffMainThread();

}  // namespace platform::backend
