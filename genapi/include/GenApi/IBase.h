// Root interface of every GenApi node interface, and the root of the references that forward to one.
#ifndef GENAPI_IBASE_H
#define GENAPI_IBASE_H

#include <GenICamFwd.h>
#include <GenApi/GenApiDll.h>
#include <GenApi/Types.h>
#include <GenApi/Reference.h>
#include <Base/GCException.h>

namespace GENAPI_NAMESPACE {

GENICAM_INTERFACE GENAPI_DECL_ABSTRACT IBase {
    virtual EAccessMode GetAccessMode() const = 0;
    virtual ~IBase() = 0;
};

inline IBase::~IBase() {}

// A reference of interface T forwarding to a node of interface I. Unbound it reports NI and every other
// call throws AccessException, as a feature the device does not have.
template <class T, class I = IBase>
class CBaseRefT : public CReferenceT<T, I> {
    typedef CReferenceT<T, I> ref;

public:
    virtual EAccessMode GetAccessMode() const { return ref::m_Ptr ? ref::m_Ptr->GetAccessMode() : NI; }

protected:
    // The bound node; throws when there is none.
    I* Bound() const {
        if (!ref::m_Ptr)
            throw ACCESS_EXCEPTION("Feature not present (reference not valid)");
        return ref::m_Ptr;
    }
};

typedef CBaseRefT<IBase> CBaseRef;

}  // namespace GENAPI_NAMESPACE

#endif
