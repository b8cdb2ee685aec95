// The names of the GenICam libraries a client links. Linux links them by name on the command line, so
// nothing is selected here; the header exists because GenICam's own headers include it.
#ifndef GENICAM_GCLINKAGE_H
#define GENICAM_GCLINKAGE_H

#include <GenICamVersion.h>

#endif
