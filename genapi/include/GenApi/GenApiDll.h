// Export macros of the GenApi library.
#ifndef GENAPI_GENAPIDLL_H
#define GENAPI_GENAPIDLL_H

#include <GenApi/GenApiNamespace.h>

#ifndef GENAPI_DECL
#define GENAPI_DECL __attribute__((visibility("default")))
#endif
#ifndef GENAPI_DECL_ABSTRACT
#define GENAPI_DECL_ABSTRACT __attribute__((visibility("default")))
#endif

#endif
