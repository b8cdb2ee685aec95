// Symbol visibility of the ParameterCollection library: hidden unless exported.
#ifndef PARAMETERCOLLECTION_PARAMETERCOLLECTIONEXPORT_H
#define PARAMETERCOLLECTION_PARAMETERCOLLECTIONEXPORT_H

#define PARAMETERCOLLECTION_EXPORT __attribute__((visibility("default")))

#endif
