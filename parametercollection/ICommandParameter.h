// The command parameter: executed, then polled for completion.
#ifndef PARAMETERCOLLECTION_ICOMMANDPARAMETER_H
#define PARAMETERCOLLECTION_ICOMMANDPARAMETER_H

#include "CommandParameterData.h"
#include "IParameter.h"

namespace ParameterCollection {

class PARAMETERCOLLECTION_EXPORT ICommandParameter : public virtual IParameter {
public:
    ~ICommandParameter() override;

    virtual void execute(bool verify) = 0;
    virtual bool isExecuting() = 0;
    virtual bool isDone() = 0;
    virtual bool tryExecute() = 0;
};

}  // namespace ParameterCollection

#endif
