// As on macOS: `long long` for 64 bits, where the C library of this machine has `long`. Code that mixes int64_t with long
// compiles here alone otherwise.
#pragma once

typedef __INT8_TYPE__ int8_t;
typedef __INT16_TYPE__ int16_t;
typedef __INT32_TYPE__ int32_t;
typedef __INT64_TYPE__ int64_t;
