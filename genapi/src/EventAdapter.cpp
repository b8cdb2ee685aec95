// The event adapters' common part: an event port for every node of the attached node map with an EventID.
#include <GenApi/GenApi.h>
#include <GenApi/EventAdapter.h>

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
    NodeList_t nodes;
    pNodeMap->GetNodes(nodes);
    for (INode* node : nodes) {
        if (node->GetEventID().empty())
            continue;
        CEventPort* port = new CEventPort;
        if (port->AttachNode(node))
            m_ppEventPorts->push_back(port);
        else
            delete port;
    }
}

void CEventAdapter::DetachNodeMap() {
    for (CEventPort* port : *m_ppEventPorts) {
        port->DetachNode();
        delete port;
    }
    m_ppEventPorts->clear();
}
