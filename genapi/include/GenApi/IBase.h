// Root interface of every GenApi node interface.
#ifndef GENAPI_IBASE_H
#define GENAPI_IBASE_H

#include <GenICamFwd.h>
#include <GenApi/Types.h>

namespace GENAPI_NAMESPACE {

GENICAM_INTERFACE GENAPI_DECL_ABSTRACT IBase {
    virtual EAccessMode GetAccessMode() const = 0;
    virtual ~IBase() = 0;
};

inline IBase::~IBase() {}

}  // namespace GENAPI_NAMESPACE

#endif
