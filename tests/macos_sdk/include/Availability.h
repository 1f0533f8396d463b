// Since which version something exists, and since which it is deprecated.
#pragma once

#define API_AVAILABLE(platform) __attribute__((availability(OVIN_SDK_SINCE_##platform)))
#define OVIN_SDK_SINCE_macos(since) macos, introduced = since
#define API_DEPRECATED(text, platform) __attribute__((availability(OVIN_SDK_UNTIL_##platform, message = text)))
#define OVIN_SDK_UNTIL_macos(since, until) macos, introduced = since, deprecated = until
