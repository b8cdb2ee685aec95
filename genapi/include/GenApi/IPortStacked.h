// Interface of ports that take several writes at once.
#ifndef GENAPI_IPORTSTACKED_H
#define GENAPI_IPORTSTACKED_H

#include <GenApi/IPort.h>
#include <stddef.h>

namespace GENAPI_NAMESPACE {

struct PORT_REGISTER_STACK_ENTRY {
    uint64_t Address;
    void* pBuffer;
    size_t Size;
};

GENICAM_INTERFACE GENAPI_DECL_ABSTRACT IPortStacked : virtual public IPort {
    using IPort::Write;
    virtual void Write(PORT_REGISTER_STACK_ENTRY * pEntries, size_t numEntries) = 0;
};

GENICAM_INTERFACE GENAPI_DECL_ABSTRACT IPortStackedConstruct : virtual public IPortStacked {
    virtual void SetPortImpl(IPortStacked * pPort) = 0;
    virtual EYesNo GetSwapEndianess() = 0;
};

// A reference forwarding the stacked port interface to a bound node.
template <class T, class I = IPortStacked>
class CPortStackedRefT : public CPortRefT<T, I> {
public:
    using CPortRefT<T, I>::Write;
    virtual void Write(PORT_REGISTER_STACK_ENTRY* pEntries, size_t numEntries) {
        this->Bound()->Write(pEntries, numEntries);
    }
};

typedef CPortStackedRefT<IPortStacked> CPortStackedRef;

}  // namespace GENAPI_NAMESPACE

#endif
