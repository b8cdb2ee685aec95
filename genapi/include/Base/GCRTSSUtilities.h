// Helpers for Windows' real-time subsystem; on other systems there is nothing to declare.
#ifndef GENICAM_GCRTSSUTILITIES_H
#define GENICAM_GCRTSSUTILITIES_H

#include <stdio.h>
#include <errno.h>

#endif
