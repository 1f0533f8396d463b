// The oldest system, as the compiler was told.
#pragma once

#include <Availability.h>

#define MAC_OS_X_VERSION_MIN_REQUIRED __ENVIRONMENT_MAC_OS_X_VERSION_MIN_REQUIRED__
