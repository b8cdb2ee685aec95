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

}  // namespace GENAPI_NAMESPACE

#endif
