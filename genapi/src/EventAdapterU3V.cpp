// Event adapter for USB3 Vision: a GenCP command header, then the event's SCD (reserved, ID, time, data).
#include <GenApi/GenApi.h>
#include <GenApi/EventAdapterU3V.h>

using namespace GENAPI_NAMESPACE;

namespace {

uint16_t littleEndian16(const uint8_t* bytes) {
    return static_cast<uint16_t>(bytes[1] << 8 | bytes[0]);
}

uint32_t littleEndian32(const uint8_t* bytes) {
    return uint32_t(bytes[3]) << 24 | uint32_t(bytes[2]) << 16 | uint32_t(bytes[1]) << 8 | bytes[0];
}

}  // namespace

CEventAdapterU3V::CEventAdapterU3V(INodeMap* pNodeMap) : CEventAdapter(pNodeMap) {}

CEventAdapterU3V::~CEventAdapterU3V() {}

// The event port's address 0 is the SCD's reserved field.
void CEventAdapterU3V::DeliverMessage(const uint8_t msg[], uint32_t numBytes) {
    if (!msg || numBytes < GENCP_EVENT_BASIC_SIZE - sizeof(uint64_t))
        throw RUNTIME_EXCEPTION("Malformed message - too small");
    const uint32_t prefix = littleEndian32(msg);
    if (prefix != U3V_EVENT_PREFIX)
        throw RUNTIME_EXCEPTION("Malformed message - wrong prefix %08x (%08x expected)", prefix,
                                U3V_EVENT_PREFIX);
    const uint16_t command = littleEndian16(msg + 6);
    if (command != GENCP_EVENT_CMD_ID)
        throw RUNTIME_EXCEPTION("Malformed message - unknown command %04x", command);
    const uint32_t length = littleEndian16(msg + 8);
    if (GENCP_COMMAND_HEADER_SIZE + length > numBytes)
        throw RUNTIME_EXCEPTION("Malformed message - reported length larger than message size");
    const uint8_t* scd = msg + GENCP_COMMAND_HEADER_SIZE;
    const uint16_t id = littleEndian16(scd + 2);
    for (CEventPort* port : *m_ppEventPorts) {
        if (port->CheckEventID(id))
            port->AttachEvent(const_cast<uint8_t*>(scd), length);
    }
}

void CEventAdapterU3V::DeliverEventMessage(const U3V_EVENT_MESSAGE* pEventMessage) {
    const uint8_t* bytes = reinterpret_cast<const uint8_t*>(pEventMessage);
    DeliverMessage(bytes, static_cast<uint32_t>(GENCP_COMMAND_HEADER_SIZE + littleEndian16(bytes + 8)));
}
