// Queues. Their types are Objective-C objects, which reference counting manages as any other.
#pragma once

#include <Foundation/NSObject.h>
#include <sys/qos.h>
#include <sys/types.h>

NS_ASSUME_NONNULL_BEGIN

#define NSEC_PER_SEC 1000000000ULL
#define NSEC_PER_MSEC 1000000ULL

@protocol OS_dispatch_object <NSObject>
@end
@protocol OS_dispatch_queue <OS_dispatch_object>
@end
@protocol OS_dispatch_queue_serial <OS_dispatch_queue>
@end
@protocol OS_dispatch_queue_main <OS_dispatch_queue_serial>
@end
@protocol OS_dispatch_queue_global <OS_dispatch_queue>
@end
@protocol OS_dispatch_group <OS_dispatch_object>
@end
@protocol OS_dispatch_source <OS_dispatch_object>
@end
@protocol OS_dispatch_semaphore <OS_dispatch_object>
@end
@protocol OS_dispatch_queue_attr <OS_dispatch_object>
@end

typedef NSObject<OS_dispatch_object>* dispatch_object_t;
typedef NSObject<OS_dispatch_queue>* dispatch_queue_t;
typedef NSObject<OS_dispatch_queue_main>* dispatch_queue_main_t;
typedef NSObject<OS_dispatch_queue_global>* dispatch_queue_global_t;
typedef NSObject<OS_dispatch_queue_serial>* dispatch_queue_serial_t;
typedef NSObject<OS_dispatch_group>* dispatch_group_t;
typedef NSObject<OS_dispatch_source>* dispatch_source_t;
typedef NSObject<OS_dispatch_semaphore>* dispatch_semaphore_t;
typedef NSObject<OS_dispatch_queue_attr>* dispatch_queue_attr_t;

typedef void (^dispatch_block_t)(void);
struct dispatch_source_type_s;
typedef const struct dispatch_source_type_s* dispatch_source_type_t;
typedef uint64_t dispatch_time_t;
typedef intptr_t dispatch_once_t;

enum : dispatch_time_t { DISPATCH_TIME_NOW = 0ULL };
#define DISPATCH_TIME_FOREVER (~0ULL)
#define DISPATCH_QUEUE_SERIAL ((dispatch_queue_attr_t) nullptr)
#define DISPATCH_APPLY_AUTO ((dispatch_queue_t _Nonnull) nullptr)

#define DISPATCH_SOURCE_TYPE_SIGNAL (&_dispatch_source_type_signal)

extern "C" {
extern const struct dispatch_source_type_s _dispatch_source_type_signal;
dispatch_queue_main_t dispatch_get_main_queue(void);
dispatch_queue_global_t dispatch_get_global_queue(intptr_t identifier, uintptr_t flags);
NS_RETURNS_RETAINED dispatch_queue_t dispatch_queue_create(const char* _Nullable label,
                                                           dispatch_queue_attr_t _Nullable attr);
dispatch_queue_attr_t dispatch_queue_attr_make_with_qos_class(dispatch_queue_attr_t _Nullable attr, qos_class_t qos_class,
                                                              int relative_priority);
void dispatch_async(dispatch_queue_t queue, dispatch_block_t block);
void dispatch_sync(dispatch_queue_t queue, NS_NOESCAPE dispatch_block_t block);
void dispatch_after(dispatch_time_t when, dispatch_queue_t queue, dispatch_block_t block);
dispatch_time_t dispatch_time(dispatch_time_t when, int64_t delta);
void dispatch_apply(size_t iterations, dispatch_queue_t _Nullable queue, NS_NOESCAPE void (^block)(size_t iteration));
NS_RETURNS_RETAINED dispatch_group_t dispatch_group_create(void);
void dispatch_group_async(dispatch_group_t group, dispatch_queue_t queue, dispatch_block_t block);
void dispatch_group_notify(dispatch_group_t group, dispatch_queue_t queue, dispatch_block_t block);
intptr_t dispatch_group_wait(dispatch_group_t group, dispatch_time_t timeout);
NS_RETURNS_RETAINED dispatch_source_t dispatch_source_create(dispatch_source_type_t type, uintptr_t handle, uintptr_t mask,
                                                             dispatch_queue_t _Nullable queue);
void dispatch_source_set_event_handler(dispatch_source_t source, dispatch_block_t _Nullable handler);
void dispatch_source_cancel(dispatch_source_t source);
void dispatch_resume(dispatch_object_t object);
void dispatch_once(dispatch_once_t* predicate, NS_NOESCAPE dispatch_block_t block);
}

NS_ASSUME_NONNULL_END
