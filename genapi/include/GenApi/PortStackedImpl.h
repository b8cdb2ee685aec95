// Base class of user ports that take several register writes in one transfer: derive, implement the
// access mode, Read and both Writes, then connect to a node map.
#ifndef GENAPI_PORTSTACKEDIMPL_H
#define GENAPI_PORTSTACKEDIMPL_H

#include <Base/GCException.h>
#include <GenApi/GenApiDll.h>
#include <GenApi/Types.h>
#include <GenApi/IPortConstruct.h>
#include <GenApi/IPortRecorder.h>
#include <GenApi/Pointer.h>

namespace GENAPI_NAMESPACE {

class CPortStackedImpl : public IPortStackedConstruct, public IPortReplay {
public:
    CPortStackedImpl() {}
    virtual ~CPortStackedImpl() {}

    virtual EAccessMode GetAccessMode() const = 0;
    virtual void Read(void* pBuffer, int64_t Address, int64_t Length) = 0;
    virtual void Write(const void* pBuffer, int64_t Address, int64_t Length) = 0;
    virtual void Write(PORT_REGISTER_STACK_ENTRY* pEntries, size_t numEntries) = 0;

    virtual void SetPortImpl(IPortStacked* pPort) { m_ptrPort = pPort; }
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
