// Umbrella header of GenICam: the base layer and GenApi.
#ifndef GENICAM_GENICAM_H
#define GENICAM_GENICAM_H

#include <Base/GCBase.h>
#include <GenApi/GenApi.h>

#endif
