// What the runtime says of methods, and lets others do in their place.
#pragma once

#include <objc/objc.h>

#pragma clang assume_nonnull begin

typedef struct objc_method* Method;
typedef void (*IMP)(void);

extern "C" Method _Nullable class_getInstanceMethod(Class _Nullable cls, SEL name);
extern "C" IMP method_getImplementation(Method m);
extern "C" IMP method_setImplementation(Method m, IMP imp);
extern "C" IMP imp_implementationWithBlock(id block);
extern "C" BOOL imp_removeBlock(IMP anImp);

#pragma clang assume_nonnull end
