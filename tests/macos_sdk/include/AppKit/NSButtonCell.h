#pragma once

#import <AppKit/NSCell.h>

typedef NS_ENUM(NSUInteger, NSButtonType) {
    NSButtonTypeMomentaryLight = 0,
    NSButtonTypePushOnPushOff = 1,
    NSButtonTypeToggle = 2,
    NSButtonTypeSwitch = 3,
    NSButtonTypeRadio = 4,
    NSButtonTypeMomentaryChange = 5,
    NSButtonTypeOnOff = 6,
    NSButtonTypeMomentaryPushIn = 7
};

typedef NS_ENUM(NSUInteger, NSBezelStyle) {
    NSBezelStyleAutomatic = 0,
    NSBezelStylePush = 1,
    NSBezelStyleFlexiblePush = 2,
    NSBezelStyleDisclosure = 5,
    NSBezelStyleCircular = 7,
    NSBezelStyleHelpButton = 9,
    NSBezelStyleSmallSquare = 10,
    NSBezelStyleToolbar = 11,
    NSBezelStyleAccessoryBarAction = 12,
    NSBezelStyleAccessoryBar = 13,
    NSBezelStylePushDisclosure = 14,
    NSBezelStyleBadge = 15,
    NSBezelStyleGlass API_AVAILABLE(macos(26.0)) = 16
};
