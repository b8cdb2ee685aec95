// printf length modifier for 64-bit integers on this platform.
#ifndef GENICAM_GCCOMPATIBILITY_H
#define GENICAM_GCCOMPATIBILITY_H

#if defined(__LP64__)
#define FMT_I64 "l"
#else
#define FMT_I64 "ll"
#endif

#endif
