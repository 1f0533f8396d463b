#pragma once

#import <QuartzCore/CALayer.h>
