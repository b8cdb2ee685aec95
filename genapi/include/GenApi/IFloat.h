// Interface of floating-point nodes.
#ifndef GENAPI_IFLOAT_H
#define GENAPI_IFLOAT_H

#include <GenApi/IValue.h>
#include <GenApi/Autovector.h>

namespace GENAPI_NAMESPACE {

GENICAM_INTERFACE GENAPI_DECL_ABSTRACT IFloat : virtual public IValue {
    virtual void SetValue(double Value, bool Verify = true) = 0;
    virtual IFloat& operator=(double Value) = 0;
    virtual double GetValue(bool Verify = false, bool IgnoreCache = false) = 0;
    virtual double operator()() = 0;
    virtual double operator*() = 0;
    virtual double GetMin() = 0;
    virtual double GetMax() = 0;
    virtual bool HasInc() = 0;
    virtual EIncMode GetIncMode() = 0;
    virtual double GetInc() = 0;
    virtual double_autovector_t GetListOfValidValues(bool bounded = true) = 0;
    virtual ERepresentation GetRepresentation() = 0;
    virtual GENICAM_NAMESPACE::gcstring GetUnit() const = 0;
    virtual EDisplayNotation GetDisplayNotation() const = 0;
    virtual int64_t GetDisplayPrecision() const = 0;
    virtual void ImposeMin(double Value) = 0;
    virtual void ImposeMax(double Value) = 0;
};

// A reference forwarding the float interface to a bound node.
template <class T, class I = IFloat>
class CFloatRefT : public CValueRefT<T, I> {
public:
    virtual void SetValue(double Value, bool Verify = true) { this->Bound()->SetValue(Value, Verify); }
    virtual IFloat& operator=(double Value) {
        this->Bound()->SetValue(Value);
        return *this;
    }
    virtual double GetValue(bool Verify = false, bool IgnoreCache = false) {
        return this->Bound()->GetValue(Verify, IgnoreCache);
    }
    virtual double operator()() { return this->Bound()->GetValue(); }
    virtual double operator*() { return this->Bound()->GetValue(); }
    virtual double GetMin() { return this->Bound()->GetMin(); }
    virtual double GetMax() { return this->Bound()->GetMax(); }
    virtual bool HasInc() { return this->Bound()->HasInc(); }
    virtual EIncMode GetIncMode() { return this->Bound()->GetIncMode(); }
    virtual double GetInc() { return this->Bound()->GetInc(); }
    virtual double_autovector_t GetListOfValidValues(bool bounded = true) {
        return this->Bound()->GetListOfValidValues(bounded);
    }
    virtual ERepresentation GetRepresentation() { return this->Bound()->GetRepresentation(); }
    virtual GENICAM_NAMESPACE::gcstring GetUnit() const { return this->Bound()->GetUnit(); }
    virtual EDisplayNotation GetDisplayNotation() const { return this->Bound()->GetDisplayNotation(); }
    virtual int64_t GetDisplayPrecision() const { return this->Bound()->GetDisplayPrecision(); }
    virtual void ImposeMin(double Value) { this->Bound()->ImposeMin(Value); }
    virtual void ImposeMax(double Value) { this->Bound()->ImposeMax(Value); }
};

typedef CFloatRefT<IFloat> CFloatRef;

}  // namespace GENAPI_NAMESPACE

#endif
