// Integers, and how enumerations are declared.
#pragma once

typedef long NSInteger;
typedef unsigned long NSUInteger;

#define NSIntegerMax __LONG_MAX__
#define NSIntegerMin (-__LONG_MAX__ - 1L)
#define NSUIntegerMax (__LONG_MAX__ * 2UL + 1UL)

// In C++ the type of a set of options is the integer itself, so that options can be joined with |; their names belong to an
// enumeration without a name.
#define NS_ENUM(type, name) \
    enum name : type name;  \
    enum __attribute__((enum_extensibility(open))) name : type
#define NS_CLOSED_ENUM(type, name) \
    enum name : type name;         \
    enum __attribute__((enum_extensibility(closed))) name : type
#define NS_OPTIONS(type, name) \
    type name;                 \
    enum __attribute__((flag_enum, enum_extensibility(open))) : type
