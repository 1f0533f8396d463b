#pragma once

#include <CoreFoundation/CFString.h>

#define kAXRoleAttribute CFSTR("AXRole")
#define kAXTitleAttribute CFSTR("AXTitle")
#define kAXDescriptionAttribute CFSTR("AXDescription")
#define kAXIdentifierAttribute CFSTR("AXIdentifier")
#define kAXChildrenAttribute CFSTR("AXChildren")
#define kAXWindowsAttribute CFSTR("AXWindows")
#define kAXPositionAttribute CFSTR("AXPosition")
#define kAXSizeAttribute CFSTR("AXSize")
#define kAXMenuBarAttribute CFSTR("AXMenuBar")
#define kAXExtrasMenuBarAttribute CFSTR("AXExtrasMenuBar")
