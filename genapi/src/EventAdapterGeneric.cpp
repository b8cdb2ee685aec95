// Event adapter for events the caller names: the whole message is the event's data.
#include <GenApi/GenApi.h>
#include <GenApi/EventAdapterGeneric.h>
#include "IdBytes.h"

using namespace GENAPI_NAMESPACE;

CEventAdapterGeneric::CEventAdapterGeneric(INodeMap* pNodeMap)
    : CEventAdapter(pNodeMap), m_pEventIDBuffer(NULL), m_AllocEventIDLength(0) {}

CEventAdapterGeneric::~CEventAdapterGeneric() {
    delete[] m_pEventIDBuffer;
}

void CEventAdapterGeneric::DeliverMessage(const uint8_t[], uint32_t) {}

void CEventAdapterGeneric::DeliverMessage(const uint8_t msg[], uint32_t numBytes,
                                          const GENICAM_NAMESPACE::gcstring& EventID) {
    const std::string text = EventID.c_str();
    if (text.size() % 2 != 0)
        throw RUNTIME_EXCEPTION("Invalid event ID delivered: %s", text.c_str());
    const std::vector<uint8_t> id = GenApiEngine::idBytes(text);
    if (static_cast<int>(id.size()) > m_AllocEventIDLength) {
        delete[] m_pEventIDBuffer;
        m_pEventIDBuffer = new uint8_t[id.size()];
        m_AllocEventIDLength = static_cast<int>(id.size());
    }
    std::copy(id.begin(), id.end(), m_pEventIDBuffer);
    for (CEventPort* port : *m_ppEventPorts) {
        if (port->CheckEventID(m_pEventIDBuffer, static_cast<int>(id.size())))
            port->AttachEvent(const_cast<uint8_t*>(msg), numBytes);
    }
}

void CEventAdapterGeneric::DeliverMessage(const uint8_t msg[], uint32_t numBytes, uint64_t EventID) {
    for (CEventPort* port : *m_ppEventPorts) {
        if (port->CheckEventID(EventID))
            port->AttachEvent(const_cast<uint8_t*>(msg), numBytes);
    }
}
