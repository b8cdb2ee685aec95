// Interface of command nodes.
#ifndef GENAPI_ICOMMAND_H
#define GENAPI_ICOMMAND_H

#include <GenApi/IValue.h>

namespace GENAPI_NAMESPACE {

GENICAM_INTERFACE GENAPI_DECL_ABSTRACT ICommand : virtual public IValue {
    virtual void Execute(bool Verify = true) = 0;
    virtual void operator()() = 0;
    virtual bool IsDone(bool Verify = true) = 0;
};

}  // namespace GENAPI_NAMESPACE

#endif
