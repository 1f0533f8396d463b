// The types of the Objective-C runtime. Its BOOL differs between processors; the compiler knows which one it compiles for.
#pragma once

#include <stddef.h>
#include <stdint.h>

typedef struct objc_class* Class;
typedef struct objc_object* id;
typedef struct objc_selector* SEL;

#if __OBJC_BOOL_IS_BOOL
typedef bool BOOL;
#else
typedef signed char BOOL;
#endif
#define YES __objc_yes
#define NO __objc_no

#ifndef nil
#define nil nullptr
#endif
#ifndef Nil
#define Nil nullptr
#endif
