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

// A reference forwarding the command interface to a bound node.
template <class T, class I = ICommand>
class CCommandRefT : public CValueRefT<T, I> {
public:
    virtual void Execute(bool Verify = true) { this->Bound()->Execute(Verify); }
    virtual void operator()() { this->Bound()->Execute(); }
    virtual bool IsDone(bool Verify = true) { return this->Bound()->IsDone(Verify); }
};

typedef CCommandRefT<ICommand> CCommandRef;

}  // namespace GENAPI_NAMESPACE

#endif
