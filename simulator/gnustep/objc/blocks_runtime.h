// Where GNUstep looks for the blocks run-time.
#pragma once

#include <Block.h>
