// GNUstep includes this header for the blocks run-time.
#pragma once

#include <Block.h>
