#pragma once

#include <HIServices/AXActionConstants.h>
#include <HIServices/AXAttributeConstants.h>
#include <HIServices/AXError.h>
#include <HIServices/AXUIElement.h>
#include <HIServices/AXValue.h>
