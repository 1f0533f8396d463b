#pragma once

#include <CoreGraphics/CGColor.h>
#include <CoreGraphics/CGDirectDisplay.h>
#include <CoreGraphics/CGDisplayConfiguration.h>
#include <CoreGraphics/CGError.h>
#include <CoreGraphics/CGEvent.h>
#include <CoreGraphics/CGGeometry.h>
