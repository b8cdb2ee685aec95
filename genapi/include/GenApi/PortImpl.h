// Base class of user ports: derive, implement access mode, Read and Write, then connect to a node map.
#ifndef GENAPI_PORTIMPL_H
#define GENAPI_PORTIMPL_H

#include <GenApi/IPortConstruct.h>
#include <GenApi/IPortRecorder.h>
#include <GenApi/Pointer.h>

namespace GENAPI_NAMESPACE {

class CPortImpl : public IPortConstruct, public IPortReplay {
public:
    CPortImpl() {}
    virtual ~CPortImpl() {}

    virtual EAccessMode GetAccessMode() const = 0;
    virtual void Read(void* pBuffer, int64_t Address, int64_t Length) = 0;
    virtual void Write(const void* pBuffer, int64_t Address, int64_t Length) = 0;

    virtual void SetPortImpl(IPort* pPort) { m_ptrPort = pPort; }
    virtual EYesNo GetSwapEndianess() { return No; }
    virtual void Replay(IPortWriteList* pPortRecorder, bool Invalidate = true) {
        if (pPortRecorder)
            pPortRecorder->Replay(this);
        if (Invalidate)
            InvalidateNode();
    }

    // Invalidates the port node this port is connected to, so that dependent nodes read again.
    void InvalidateNode() {
        if (m_ptrPort.IsValid())
            m_ptrPort->InvalidateNode();
    }

protected:
    CNodePtr m_ptrPort;
};

}  // namespace GENAPI_NAMESPACE

#endif
