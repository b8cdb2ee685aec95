// GenCP event packets, shared by the transports that carry them (USB3 Vision, Camera Link): after a
// transport prefix, a little-endian command header and the event's SCD.
#ifndef GENAPI_ENGINE_GENCPEVENT_H
#define GENAPI_ENGINE_GENCPEVENT_H

#include <GenApi/EventPort.h>
#include <cstddef>
#include <vector>

namespace GenApiEngine {

uint16_t littleEndian16(const uint8_t* bytes);
uint32_t littleEndian32(const uint8_t* bytes);

// Checks the command header that follows prefixSize bytes and attaches the SCD (reserved, ID, time,
// data) to the ports of its event ID; throws "Malformed message - …" for what is not an event packet.
void deliverGenCpEvent(std::vector<GenApi::CEventPort*>& ports, const uint8_t* msg, uint32_t numBytes,
                       size_t prefixSize);

}  // namespace GenApiEngine

#endif
