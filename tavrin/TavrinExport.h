// Symbol visibility of the camera SDK services.
#ifndef TAVRIN_TAVRINEXPORT_H
#define TAVRIN_TAVRINEXPORT_H

#define TAVRIN_EXPORT __attribute__((visibility("default")))

#endif
