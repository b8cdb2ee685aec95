// Event adapter for events whose ID the caller gives with the data.
#ifndef GENAPI_EVENTADAPTERGENERIC_H
#define GENAPI_EVENTADAPTERGENERIC_H

#include <GenApi/EventAdapter.h>

namespace GENAPI_NAMESPACE {

class GENAPI_DECL CEventAdapterGeneric : public CEventAdapter {
public:
    CEventAdapterGeneric(INodeMap* pNodeMap = NULL);
    virtual ~CEventAdapterGeneric();

    // Without an ID there is nobody to deliver to: does nothing.
    virtual void DeliverMessage(const uint8_t msg[], uint32_t numBytes);
    // The ID as hexadecimal text, whole bytes.
    virtual void DeliverMessage(const uint8_t msg[], uint32_t numBytes,
                                const GENICAM_NAMESPACE::gcstring& EventID);
    virtual void DeliverMessage(const uint8_t msg[], uint32_t numBytes, uint64_t EventID);

private:
    CEventAdapterGeneric(const CEventAdapterGeneric&);
    CEventAdapterGeneric& operator=(const CEventAdapterGeneric&);

    uint8_t* m_pEventIDBuffer;
    int m_AllocEventIDLength;
};

}  // namespace GENAPI_NAMESPACE

#endif
