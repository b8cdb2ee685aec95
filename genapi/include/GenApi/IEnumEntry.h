// Interface of the entries of an enumeration.
#ifndef GENAPI_IENUMENTRY_H
#define GENAPI_IENUMENTRY_H

#include <GenApi/IValue.h>

namespace GENAPI_NAMESPACE {

GENICAM_INTERFACE GENAPI_DECL_ABSTRACT IEnumEntry : virtual public IValue {
    virtual int64_t GetValue() = 0;
    virtual GENICAM_NAMESPACE::gcstring GetSymbolic() const = 0;
    virtual double GetNumericValue() = 0;
    virtual bool IsSelfClearing() = 0;
};

// A reference forwarding the enumeration entry interface to a bound node.
template <class T, class I = IEnumEntry>
class CEnumEntryRefT : public CValueRefT<T, I> {
public:
    virtual int64_t GetValue() { return this->Bound()->GetValue(); }
    virtual GENICAM_NAMESPACE::gcstring GetSymbolic() const { return this->Bound()->GetSymbolic(); }
    virtual double GetNumericValue() { return this->Bound()->GetNumericValue(); }
    virtual bool IsSelfClearing() { return this->Bound()->IsSelfClearing(); }
};

typedef CEnumEntryRefT<IEnumEntry> CEnumEntryRef;

}  // namespace GENAPI_NAMESPACE

#endif
