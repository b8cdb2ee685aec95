// Event adapter for IIDC events: the event ID is in the low half of the first big-endian quadlet.
#include <GenApi/GenApi.h>
#include <GenApi/EventAdapter1394.h>

using namespace GENAPI_NAMESPACE;

CEventAdapter1394::CEventAdapter1394(INodeMap* pNodeMap) : CEventAdapter(pNodeMap) {}

CEventAdapter1394::~CEventAdapter1394() {}

void CEventAdapter1394::DeliverMessage(const uint8_t msg[], uint32_t numBytes) {
    if (!msg || numBytes < 4)
        throw RUNTIME_EXCEPTION("Malformed message - too small");
    const uint16_t id = static_cast<uint16_t>(msg[2] << 8 | msg[3]);
    for (CEventPort* port : *m_ppEventPorts) {
        if (port->CheckEventID(id))
            port->AttachEvent(const_cast<uint8_t*>(msg), numBytes);
    }
}
