// Interface of boolean nodes.
#ifndef GENAPI_IBOOLEAN_H
#define GENAPI_IBOOLEAN_H

#include <GenApi/IValue.h>

namespace GENAPI_NAMESPACE {

GENICAM_INTERFACE GENAPI_DECL_ABSTRACT IBoolean : virtual public IValue {
    virtual void SetValue(bool Value, bool Verify = true) = 0;
    virtual IBoolean& operator=(bool Value) {
        SetValue(Value);
        return *this;
    }
    virtual bool GetValue(bool Verify = false, bool IgnoreCache = false) const = 0;
    virtual bool operator()() const {
        return GetValue();
    }
};

// A reference forwarding the boolean interface to a bound node.
template <class T, class I = IBoolean>
class CBooleanRefT : public CValueRefT<T, I> {
public:
    virtual void SetValue(bool Value, bool Verify = true) { this->Bound()->SetValue(Value, Verify); }
    virtual IBoolean& operator=(bool Value) {
        this->Bound()->SetValue(Value);
        return *this;
    }
    virtual bool GetValue(bool Verify = false, bool IgnoreCache = false) const {
        return this->Bound()->GetValue(Verify, IgnoreCache);
    }
    virtual bool operator()() const { return this->Bound()->GetValue(); }
};

typedef CBooleanRefT<IBoolean> CBooleanRef;

}  // namespace GENAPI_NAMESPACE

#endif
