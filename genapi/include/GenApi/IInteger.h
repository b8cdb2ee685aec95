// Interface of integer nodes.
#ifndef GENAPI_IINTEGER_H
#define GENAPI_IINTEGER_H

#include <GenApi/IValue.h>
#include <GenApi/Autovector.h>

namespace GENAPI_NAMESPACE {

GENICAM_INTERFACE GENAPI_DECL_ABSTRACT IInteger : virtual public IValue {
    virtual void SetValue(int64_t Value, bool Verify = true) = 0;
    virtual IInteger& operator=(int64_t Value) = 0;
    virtual int64_t GetValue(bool Verify = false, bool IgnoreCache = false) = 0;
    virtual int64_t operator()() = 0;
    virtual int64_t operator*() = 0;
    virtual int64_t GetMin() = 0;
    virtual int64_t GetMax() = 0;
    virtual EIncMode GetIncMode() = 0;
    virtual int64_t GetInc() = 0;
    virtual int64_autovector_t GetListOfValidValues(bool bounded = true) = 0;
    virtual ERepresentation GetRepresentation() = 0;
    virtual GENICAM_NAMESPACE::gcstring GetUnit() = 0;
    virtual void ImposeMin(int64_t Value) = 0;
    virtual void ImposeMax(int64_t Value) = 0;
};

// A reference forwarding the integer interface to a bound node.
template <class T, class I = IInteger>
class CIntegerRefT : public CValueRefT<T, I> {
public:
    virtual void SetValue(int64_t Value, bool Verify = true) { this->Bound()->SetValue(Value, Verify); }
    virtual IInteger& operator=(int64_t Value) {
        this->Bound()->SetValue(Value);
        return *this;
    }
    virtual int64_t GetValue(bool Verify = false, bool IgnoreCache = false) {
        return this->Bound()->GetValue(Verify, IgnoreCache);
    }
    virtual int64_t operator()() { return this->Bound()->GetValue(); }
    virtual int64_t operator*() { return this->Bound()->GetValue(); }
    virtual int64_t GetMin() { return this->Bound()->GetMin(); }
    virtual int64_t GetMax() { return this->Bound()->GetMax(); }
    virtual EIncMode GetIncMode() { return this->Bound()->GetIncMode(); }
    virtual int64_t GetInc() { return this->Bound()->GetInc(); }
    virtual int64_autovector_t GetListOfValidValues(bool bounded = true) {
        return this->Bound()->GetListOfValidValues(bounded);
    }
    virtual ERepresentation GetRepresentation() { return this->Bound()->GetRepresentation(); }
    virtual GENICAM_NAMESPACE::gcstring GetUnit() { return this->Bound()->GetUnit(); }
    virtual void ImposeMin(int64_t Value) { this->Bound()->ImposeMin(Value); }
    virtual void ImposeMax(int64_t Value) { this->Bound()->ImposeMax(Value); }
};

typedef CIntegerRefT<IInteger> CIntegerRef;

}  // namespace GENAPI_NAMESPACE

#endif
