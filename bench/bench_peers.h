// The measures against libraries; each prints its table and its goals.
#pragma once

namespace bench {

void benchBlur();
void benchLoading();

}  // namespace bench
