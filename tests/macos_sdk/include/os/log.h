// The unified log. The macros of the system do more; these check the format, which is what a compiler can do.
#pragma once

#include <Foundation/NSObject.h>

NS_ASSUME_NONNULL_BEGIN

@protocol OS_os_log <NSObject>
@end
typedef NSObject<OS_os_log>* os_log_t;

extern "C" {
NS_RETURNS_RETAINED os_log_t os_log_create(const char* subsystem, const char* category);
void _os_log_format_check(os_log_t log, const char* format, ...) __attribute__((format(os_log, 2, 3)));
}

#define os_log(log, format, ...) _os_log_format_check(log, format __VA_OPT__(, ) __VA_ARGS__)
#define os_log_error(log, format, ...) _os_log_format_check(log, format __VA_OPT__(, ) __VA_ARGS__)
#define os_log_info(log, format, ...) _os_log_format_check(log, format __VA_OPT__(, ) __VA_ARGS__)
#define os_log_debug(log, format, ...) _os_log_format_check(log, format __VA_OPT__(, ) __VA_ARGS__)

NS_ASSUME_NONNULL_END
