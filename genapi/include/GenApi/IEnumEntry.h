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

}  // namespace GENAPI_NAMESPACE

#endif
