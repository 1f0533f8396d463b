#pragma once

#include <CoreFoundation/CFString.h>

#define kAXPressAction CFSTR("AXPress")
#define kAXShowMenuAction CFSTR("AXShowMenu")
