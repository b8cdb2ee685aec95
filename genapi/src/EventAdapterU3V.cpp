// Event adapter for USB3 Vision: the "U3VE" prefix, a GenCP command header, then the event's SCD.
#include <GenApi/GenApi.h>
#include <GenApi/EventAdapterU3V.h>
#include "GenCpEvent.h"

using namespace GENAPI_NAMESPACE;

CEventAdapterU3V::CEventAdapterU3V(INodeMap* pNodeMap) : CEventAdapter(pNodeMap) {}

CEventAdapterU3V::~CEventAdapterU3V() {}

// The event port's address 0 is the SCD's reserved field.
void CEventAdapterU3V::DeliverMessage(const uint8_t msg[], uint32_t numBytes) {
    if (!msg || numBytes < GENCP_EVENT_BASIC_SIZE - sizeof(uint64_t))
        throw RUNTIME_EXCEPTION("Malformed message - too small");
    const uint32_t prefix = GenApiEngine::littleEndian32(msg);
    if (prefix != U3V_EVENT_PREFIX)
        throw RUNTIME_EXCEPTION("Malformed message - wrong prefix %08x (%08x expected)", prefix,
                                U3V_EVENT_PREFIX);
    GenApiEngine::deliverGenCpEvent(*m_ppEventPorts, msg, numBytes, sizeof(uint32_t));
}

void CEventAdapterU3V::DeliverEventMessage(const U3V_EVENT_MESSAGE* pEventMessage) {
    const uint8_t* bytes = reinterpret_cast<const uint8_t*>(pEventMessage);
    DeliverMessage(
        bytes, static_cast<uint32_t>(GENCP_COMMAND_HEADER_SIZE + GenApiEngine::littleEndian16(bytes + 8)));
}
