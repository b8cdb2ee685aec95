// Event adapter for GigE Vision: GVCP EVENT packets carry items, EVENTDATA packets one item and its data.
#include <GenApi/GenApi.h>
#include <GenApi/EventAdapterGEV.h>

using namespace GENAPI_NAMESPACE;

namespace {

uint16_t bigEndian16(const uint8_t* bytes) {
    return static_cast<uint16_t>(bytes[0] << 8 | bytes[1]);
}

const unsigned headerSize = sizeof(GVCP_REQUEST_HEADER);

}  // namespace

CEventAdapterGEV::CEventAdapterGEV(INodeMap* pNodeMap) : CEventAdapter(pNodeMap) {}

CEventAdapterGEV::~CEventAdapterGEV() {}

void CEventAdapterGEV::DeliverMessage(const uint8_t msg[], uint32_t numBytes) {
    if (!msg || numBytes < headerSize)
        throw RUNTIME_EXCEPTION("Malformed message - too small");
    if (msg[0] != COMMAND_MAGIC)
        throw RUNTIME_EXCEPTION("Malformed message - wrong magic %02x (%02x expected)", msg[0],
                                COMMAND_MAGIC);
    const bool extended = (msg[1] & 0x10) != 0;
    const unsigned itemSize = extended ? sizeof(GVCP_EVENT_ITEM_EXTENDED_ID) : sizeof(GVCP_EVENT_ITEM);
    const uint16_t command = bigEndian16(msg + 2);
    if (command == TAG_EVENT_CMD) {
        // Items follow one another; a non-zero size field gives an item's own size, data included.
        unsigned offset = headerSize;
        while (offset + sizeof(GVCP_EVENT_ITEM_BASIC) <= numBytes) {
            const uint16_t size = bigEndian16(msg + offset);
            const unsigned length = size ? size : itemSize;
            if (offset + length > numBytes)
                throw RUNTIME_EXCEPTION("Malformed message - item larger than message");
            DeliverEventItem(reinterpret_cast<const GVCP_EVENT_ITEM_BASIC*>(msg + offset), length);
            offset += length;
        }
    } else if (command == TAG_EVENTDATA_CMD) {
        if (numBytes <= headerSize + itemSize)
            throw RUNTIME_EXCEPTION("Malformed message - too small");
        DeliverEventItem(reinterpret_cast<const GVCP_EVENT_ITEM_BASIC*>(msg + headerSize),
                         numBytes - headerSize);
    } else {
        // The tag as it lies in memory, as GenApi prints it.
        throw RUNTIME_EXCEPTION("Malformed message - unknown tag %04x", msg[3] << 8 | msg[2]);
    }
}

void CEventAdapterGEV::DeliverEventMessage(const GVCP_EVENT_REQUEST* pEvent) {
    const uint8_t* bytes = reinterpret_cast<const uint8_t*>(pEvent);
    DeliverMessage(bytes, headerSize + bigEndian16(bytes + 4));
}

void CEventAdapterGEV::DeliverEventMessage(const GVCP_EVENTDATA_REQUEST* pEventData) {
    DeliverEventMessage(reinterpret_cast<const GVCP_EVENT_REQUEST*>(pEventData));
}

void CEventAdapterGEV::DeliverEventMessage(const GVCP_EVENT_REQUEST_EXTENDED_ID* pEvent) {
    DeliverEventMessage(reinterpret_cast<const GVCP_EVENT_REQUEST*>(pEvent));
}

void CEventAdapterGEV::DeliverEventMessage(const GVCP_EVENTDATA_REQUEST_EXTENDED_ID* pEventData) {
    DeliverEventMessage(reinterpret_cast<const GVCP_EVENT_REQUEST*>(pEventData));
}

// The event port's address 0 is the item's first byte.
void CEventAdapterGEV::DeliverEventItem(const GVCP_EVENT_ITEM_BASIC* pItem, unsigned int length) {
    const uint8_t* bytes = reinterpret_cast<const uint8_t*>(pItem);
    AttachItemToPorts(bytes, bigEndian16(bytes + 2), length);
}

void CEventAdapterGEV::AttachItemToPorts(const uint8_t* pItem, uint16_t event_id, unsigned int length) {
    for (CEventPort* port : *m_ppEventPorts) {
        if (port->CheckEventID(event_id))
            port->AttachEvent(const_cast<uint8_t*>(pItem), length);
    }
}
