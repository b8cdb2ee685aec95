// Event adapter for IIDC (1394) events: a big-endian quadlet with the event ID in its low 16 bits, then
// the event's data; the event port's address 0 is the message's first byte.
#ifndef GENAPI_EVENTADAPTER1394_H
#define GENAPI_EVENTADAPTER1394_H

#include <GenApi/EventAdapter.h>

namespace GENAPI_NAMESPACE {

class GENAPI_DECL CEventAdapter1394 : public CEventAdapter {
public:
    CEventAdapter1394(INodeMap* pNodeMap = NULL);
    virtual ~CEventAdapter1394();
    virtual void DeliverMessage(const uint8_t msg[], uint32_t numBytes);

private:
    CEventAdapter1394(const CEventAdapter1394&);
    CEventAdapter1394& operator=(const CEventAdapter1394&);
};

}  // namespace GENAPI_NAMESPACE

#endif
