// Interface of nodes that have a value with a text form.
#ifndef GENAPI_IVALUE_H
#define GENAPI_IVALUE_H

#include <GenApi/INode.h>
#include <Base/GCException.h>

namespace GENAPI_NAMESPACE {

GENICAM_INTERFACE GENAPI_DECL_ABSTRACT IValue : virtual public IBase {
    virtual INode* GetNode() {
        return dynamic_cast<INode*>(this);
    }
    virtual GENICAM_NAMESPACE::gcstring ToString(bool Verify = false, bool IgnoreCache = false) = 0;
    virtual void FromString(const GENICAM_NAMESPACE::gcstring& ValueStr, bool Verify = true) = 0;
    virtual bool IsValueCacheValid() const = 0;
};

// A reference forwarding the value interface to a bound node.
template <class T, class I = IValue>
class CValueRefT : public CBaseRefT<T, I> {
public:
    virtual INode* GetNode() { return this->Bound()->GetNode(); }
    virtual GENICAM_NAMESPACE::gcstring ToString(bool Verify = false, bool IgnoreCache = false) {
        return this->Bound()->ToString(Verify, IgnoreCache);
    }
    virtual void FromString(const GENICAM_NAMESPACE::gcstring& ValueStr, bool Verify = true) {
        this->Bound()->FromString(ValueStr, Verify);
    }
    virtual bool IsValueCacheValid() const { return this->Bound()->IsValueCacheValid(); }
};

typedef CValueRefT<IValue> CValueRef;

}  // namespace GENAPI_NAMESPACE

#endif
