// Umbrella header of the GenICam base layer.
#ifndef GENICAM_GCBASE_H
#define GENICAM_GCBASE_H

#include <Base/GCTypes.h>
#include <Base/GCString.h>
#include <Base/GCArray.h>
#include <Base/GCStringVector.h>
#include <Base/GCException.h>
#include <Base/GCUtilities.h>

#endif
