// Base of the event adapters: delivers event messages to the nodes of a node map that carry their ID.
#ifndef GENAPI_EVENTADAPTER_H
#define GENAPI_EVENTADAPTER_H

#include <GenApi/Types.h>
#include <GenApi/INodeMap.h>
#include <GenApi/EventPort.h>
#include <vector>

namespace GENAPI_NAMESPACE {

class GENAPI_DECL CEventAdapter {
public:
    CEventAdapter(INodeMap* pNodeMap = NULL);
    virtual ~CEventAdapter();

    virtual void AttachNodeMap(INodeMap* pNodeMap);
    virtual void DetachNodeMap();
    virtual void DeliverMessage(const uint8_t msg[], uint32_t numBytes) = 0;

protected:
    // A pointer, to keep the standard library's type out of the library's interface.
    std::vector<CEventPort*>* m_ppEventPorts;

private:
    CEventAdapter(const CEventAdapter&);
    CEventAdapter& operator=(const CEventAdapter&);
};

}  // namespace GENAPI_NAMESPACE

#endif
