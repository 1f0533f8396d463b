// Locales as values, as the C library of macOS has them.
#pragma once

#include <ctype.h>
#include <locale.h>
#include <stdarg.h>
#include <stddef.h>

extern "C" {

int snprintf_l(char* text, size_t size, locale_t locale, const char* format, ...);
int asprintf_l(char** text, locale_t locale, const char* format, ...);
int sscanf_l(const char* text, locale_t locale, const char* format, ...);

}  // extern "C"

// Macros of the C library of this machine look into a locale, which is something else on macOS.
#undef isdigit_l
#undef isxdigit_l
