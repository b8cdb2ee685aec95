// GenApi's name for the platform compatibility definitions (printf length modifiers).
#ifndef GENAPI_COMPATIBILITY_H
#define GENAPI_COMPATIBILITY_H

#include <Base/GCCompatibility.h>

#endif
