// Interface of nodes that have a value with a text form.
#ifndef GENAPI_IVALUE_H
#define GENAPI_IVALUE_H

#include <GenApi/INode.h>

namespace GENAPI_NAMESPACE {

GENICAM_INTERFACE GENAPI_DECL_ABSTRACT IValue : virtual public IBase {
    virtual INode* GetNode() {
        return dynamic_cast<INode*>(this);
    }
    virtual GENICAM_NAMESPACE::gcstring ToString(bool Verify = false, bool IgnoreCache = false) = 0;
    virtual void FromString(const GENICAM_NAMESPACE::gcstring& ValueStr, bool Verify = true) = 0;
    virtual bool IsValueCacheValid() const = 0;
};

}  // namespace GENAPI_NAMESPACE

#endif
