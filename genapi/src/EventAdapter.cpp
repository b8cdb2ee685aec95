// The event adapters' common part: an event port for every node of the attached node map with an EventID.
#include <GenApi/GenApi.h>
#include <GenApi/EventAdapter.h>
#include "AdapterPorts.h"

using namespace GENAPI_NAMESPACE;

CEventAdapter::CEventAdapter(INodeMap* pNodeMap) : m_ppEventPorts(new std::vector<CEventPort*>) {
    if (pNodeMap)
        CEventAdapter::AttachNodeMap(pNodeMap);
}

CEventAdapter::~CEventAdapter() {
    CEventAdapter::DetachNodeMap();
    delete m_ppEventPorts;
}

void CEventAdapter::AttachNodeMap(INodeMap* pNodeMap) {
    DetachNodeMap();
    if (!pNodeMap)
        return;
    GenApiEngine::attachPorts(pNodeMap, *m_ppEventPorts, [](CEventPort& port, INode* node) {
        return !node->GetEventID().empty() && port.AttachNode(node);
    });
}

void CEventAdapter::DetachNodeMap() {
    for (CEventPort* port : *m_ppEventPorts) {
        port->DetachNode();
        delete port;
    }
    m_ppEventPorts->clear();
}
