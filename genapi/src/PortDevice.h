// An Aravis device whose memory is a GenApi port, so that Aravis evaluates registers through user ports.
#ifndef GENAPI_ENGINE_PORTDEVICE_H
#define GENAPI_ENGINE_PORTDEVICE_H

#include <GenApi/IPort.h>
#include <GenApi/IPortRecorder.h>
#include <arv.h>
#include "RegisterCache.h"
#include <exception>

namespace GenApiEngine {

// Creates a device that forwards memory reads and writes to a port; no port is connected at first.
ArvDevice* createPortDevice();
// Connects (or, with null, disconnects) the port behind a device made by createPortDevice.
void setDevicePort(ArvDevice* device, GenApi::IPort* port);
// Addresses with bits at `shift` and above belong to the port of that tag (0: no tags).
void setTagShift(ArvDevice* device, int shift);
// Connects (or, with null, disconnects) the port that serves the addresses of a tag.
void setTaggedPort(ArvDevice* device, int tag, GenApi::IPort* port);
// Lets reads be served from, and transfers update, a register cache (null for none).
void setDeviceCache(ArvDevice* device, CRegisterCache* cache);
// Records (or, with null, stops recording) the writes a port takes into a write list.
void setPortRecorder(ArvDevice* device, GenApi::IPort* port, GenApi::IPortWriteList* list);
// True for devices made by createPortDevice.
bool isPortDevice(ArvDevice* device);
// Takes the exception the port raised during the last failed transfer, if any.
std::exception_ptr takePortError(ArvDevice* device);

}  // namespace GenApiEngine

#endif
