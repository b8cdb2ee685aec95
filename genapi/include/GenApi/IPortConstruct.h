// Interface through which a port node learns of the user port it talks to.
#ifndef GENAPI_IPORTCONSTRUCT_H
#define GENAPI_IPORTCONSTRUCT_H

#include <GenApi/IPort.h>

namespace GENAPI_NAMESPACE {

GENICAM_INTERFACE GENAPI_DECL_ABSTRACT IPortConstruct : virtual public IPort {
    virtual void SetPortImpl(IPort * pPort) = 0;
    virtual EYesNo GetSwapEndianess() = 0;
};

}  // namespace GENAPI_NAMESPACE

#endif
