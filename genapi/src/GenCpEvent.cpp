// GenCP event packets for the event adapters of USB3 Vision and Camera Link.
#include <GenApi/GenApi.h>
#include <GenApi/EventAdapterU3V.h>
#include "GenCpEvent.h"

using namespace GENAPI_NAMESPACE;

namespace GenApiEngine {

uint16_t littleEndian16(const uint8_t* bytes) {
    return static_cast<uint16_t>(bytes[1] << 8 | bytes[0]);
}

uint32_t littleEndian32(const uint8_t* bytes) {
    return uint32_t(bytes[3]) << 24 | uint32_t(bytes[2]) << 16 | uint32_t(bytes[1]) << 8 | bytes[0];
}

void deliverGenCpEvent(std::vector<CEventPort*>& ports, const uint8_t* msg, uint32_t numBytes,
                       size_t prefixSize) {
    // The command header: flags, command, SCD length, request ID.
    const size_t headerEnd = prefixSize + 8;
    if (numBytes < headerEnd + 4)
        throw RUNTIME_EXCEPTION("Malformed message - too small");
    const uint16_t command = littleEndian16(msg + prefixSize + 2);
    if (command != GENCP_EVENT_CMD_ID)
        throw RUNTIME_EXCEPTION("Malformed message - unknown command %04x", command);
    const uint32_t length = littleEndian16(msg + prefixSize + 4);
    if (headerEnd + length > numBytes)
        throw RUNTIME_EXCEPTION("Malformed message - reported length larger than message size");
    const uint8_t* scd = msg + headerEnd;
    const uint16_t id = littleEndian16(scd + 2);
    for (CEventPort* port : ports) {
        if (port->CheckEventID(id))
            port->AttachEvent(const_cast<uint8_t*>(scd), length);
    }
}

}  // namespace GenApiEngine
