// Event adapter for Camera Link events: GenCP event packets over the serial link (preamble 0x0100, two
// CRC-16 fields and the channel, then the command header and the event's SCD, all little-endian); the
// event port's address 0 is the SCD's first byte, as with USB3 Vision.
#ifndef GENAPI_EVENTADAPTERCL_H
#define GENAPI_EVENTADAPTERCL_H

#include <GenApi/EventAdapter.h>

namespace GENAPI_NAMESPACE {

class GENAPI_DECL CEventAdapterCL : public CEventAdapter {
public:
    CEventAdapterCL(INodeMap* pNodeMap = NULL);
    virtual ~CEventAdapterCL();
    virtual void DeliverMessage(const uint8_t msg[], uint32_t numBytes);

private:
    CEventAdapterCL(const CEventAdapterCL&);
    CEventAdapterCL& operator=(const CEventAdapterCL&);
};

}  // namespace GENAPI_NAMESPACE

#endif
