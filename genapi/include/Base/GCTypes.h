// Fixed-size scalar types and limits used throughout GenICam.
#ifndef GENICAM_GCTYPES_H
#define GENICAM_GCTYPES_H

#ifndef __STDC_LIMIT_MACROS
#define __STDC_LIMIT_MACROS
#endif
#ifndef __STDC_CONSTANT_MACROS
#define __STDC_CONSTANT_MACROS
#endif
#include <stddef.h>
#include <stdint.h>
#include <inttypes.h>

#define GC_INT64_MAX INT64_MAX
#define GC_INT64_MIN INT64_MIN
#define GC_UINT64_MAX UINT64_MAX
#define GC_INT32_MAX INT32_MAX
#define GC_INT32_MIN INT32_MIN
#define GC_UINT32_MAX UINT32_MAX
#define GC_INT8_MAX INT8_MAX
#define GC_INT8_MIN INT8_MIN
#define GC_UINT8_MAX UINT8_MAX

typedef float float32_t;
typedef double float64_t;

#define GC_UNUSED(unused_var) (void)(unused_var)
#define GC_COUNTOF(arr) (sizeof(arr) / sizeof((arr)[0]))

// Version number of a device description, schema or library.
struct Version_t {
    uint16_t Major;
    uint16_t Minor;
    uint16_t SubMinor;
};

typedef int64_t GenICam_streamsize;

#endif
