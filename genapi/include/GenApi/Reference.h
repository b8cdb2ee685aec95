// Interfaces through which generated parameter classes bind their typed members to a node map's nodes.
#ifndef GENAPI_REFERENCE_H
#define GENAPI_REFERENCE_H

#include <GenApi/Types.h>
#include <GenApi/GenApiDll.h>

namespace GENAPI_NAMESPACE {

struct IBase;

// Binds a reference object to the node it forwards to.
GENICAM_INTERFACE GENAPI_DECL_ABSTRACT IReference {
    virtual void SetReference(IBase * pBase) = 0;
    virtual ~IReference() {}
};

// Binds the entries of a typed enumeration: entry Index of the C++ enumeration is the entry called Name.
GENICAM_INTERFACE GENAPI_DECL_ABSTRACT IEnumReference {
    virtual void SetEnumReference(int Index, GENICAM_NAMESPACE::gcstring Name) = 0;
    virtual void SetNumEnums(int NumEnums) = 0;
    virtual ~IEnumReference() {}
};

// Holds the node of interface I a reference of interface T forwards to; unbound (null) until
// SetReference is given a node of that interface.
template <class T, class I = T>
class CReferenceT : public T, public IReference {
public:
    CReferenceT() : m_Ptr(NULL) {}
    virtual void SetReference(IBase* pBase) { m_Ptr = dynamic_cast<I*>(pBase); }

protected:
    I* m_Ptr;
};

}  // namespace GENAPI_NAMESPACE

#endif
