#pragma once

#include <sys/qos.h>

extern "C" int pthread_set_qos_class_self_np(qos_class_t qos_class, int relative_priority);
