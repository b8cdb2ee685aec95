// Interface through which node maps are destroyed.
#ifndef GENAPI_IDESTROY_H
#define GENAPI_IDESTROY_H

#include <GenICamFwd.h>
#include <GenApi/GenApiDll.h>

namespace GENAPI_NAMESPACE {

GENICAM_INTERFACE GENAPI_DECL_ABSTRACT IDestroy {
    virtual void Destroy() = 0;
    virtual ~IDestroy() {}
};

}  // namespace GENAPI_NAMESPACE

#endif
