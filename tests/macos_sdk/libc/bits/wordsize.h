// macOS is a system of 64 bits, on both of its processors.
#pragma once

#define __WORDSIZE 64
#define __WORDSIZE_TIME64_COMPAT32 1
