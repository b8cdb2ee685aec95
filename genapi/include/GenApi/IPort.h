// Interface of ports, the byte-addressed access to a device.
#ifndef GENAPI_IPORT_H
#define GENAPI_IPORT_H

#include <GenApi/IBase.h>
#include <Base/GCException.h>

namespace GENAPI_NAMESPACE {

GENICAM_INTERFACE GENAPI_DECL_ABSTRACT IPort : virtual public IBase {
    virtual void Read(void* pBuffer, int64_t Address, int64_t Length) = 0;
    virtual void Write(const void* pBuffer, int64_t Address, int64_t Length) = 0;
};

// A reference forwarding the port interface to a bound node.
template <class T, class I = IPort>
class CPortRefT : public CBaseRefT<T, I> {
public:
    virtual void Read(void* pBuffer, int64_t Address, int64_t Length) {
        this->Bound()->Read(pBuffer, Address, Length);
    }
    virtual void Write(const void* pBuffer, int64_t Address, int64_t Length) {
        this->Bound()->Write(pBuffer, Address, Length);
    }
};

typedef CPortRefT<IPort> CPortRef;

}  // namespace GENAPI_NAMESPACE

#endif
