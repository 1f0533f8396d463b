// A Mac, not one of the other systems of its maker.
#pragma once

#define TARGET_OS_MAC 1
#define TARGET_OS_OSX 1
#define TARGET_OS_IPHONE 0
