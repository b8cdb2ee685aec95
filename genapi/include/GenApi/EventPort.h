// The port that serves the data of the last event with its node's EventID.
#ifndef GENAPI_EVENTPORT_H
#define GENAPI_EVENTPORT_H

#include <GenApi/Pointer.h>
#include <GenApi/IPortConstruct.h>
#include <GenApi/INodeMap.h>

namespace GENAPI_NAMESPACE {

class GENAPI_DECL CEventPort : public IPortConstruct {
public:
    CEventPort(INode* pNode = NULL);
    ~CEventPort();

    // RO once an event has arrived, NA before.
    virtual EAccessMode GetAccessMode() const;
    virtual EInterfaceType GetPrincipalInterfaceType() const;
    virtual void Read(void* pBuffer, int64_t Address, int64_t Length);
    virtual void Write(const void* pBuffer, int64_t Address, int64_t Length);
    virtual void SetPortImpl(IPort* pPort);
    virtual void SetPortImpl(IPortStacked* pPort);
    virtual EYesNo GetSwapEndianess();

    void InvalidateNode();
    // Serves a port node with an EventID, or only tells another node with one of its events.
    bool AttachNode(INode* pNode);
    void DetachNode();
    int GetEventIDLength();
    bool CheckEventID(uint8_t* pEventIDBuffer, int EventIDLength) const;
    bool CheckEventID(uint64_t EventID) const;
    // Keeps a copy of an event's Length bytes and tells the node.
    void AttachEvent(uint8_t* pBaseAddress, int64_t Length);
    void DetachEvent();

protected:
    CLock& GetLock() const;

private:
    void ResetEventDataBuffer();
    CEventPort(const CEventPort&);
    CEventPort& operator=(const CEventPort&);

    uint8_t* m_pEventData;
    int64_t m_EventDataLength;
    int64_t m_EventDataAlloc;
    CNodePtr m_ptrNode;
    uint8_t* m_pEventIDBuffer;
    int m_EventIDLength;
    bool m_IsAttachedToPortNode;
    uint64_t m_EventIDNumber;
    bool m_EventIDNumberValid;
};

}  // namespace GENAPI_NAMESPACE

#endif
