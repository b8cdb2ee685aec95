// The name of the GenApi library a client links. Linux links it by name on the command line, so nothing
// is selected here; the header exists because GenApi's own headers include it.
#ifndef GENAPI_GENAPILINKAGE_H
#define GENAPI_GENAPILINKAGE_H

#include <Base/GCLinkage.h>

#endif
