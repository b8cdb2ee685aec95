// Snapshot of a command parameter: the base fields, then whether the command is done.
#ifndef PARAMETERCOLLECTION_COMMANDPARAMETERDATA_H
#define PARAMETERCOLLECTION_COMMANDPARAMETERDATA_H

#include "ParameterData.h"

namespace ParameterCollection {

class PARAMETERCOLLECTION_EXPORT CommandParameterData : public ParameterData {
public:
    CommandParameterData() { parameterType = ParameterType_Command; }

    bool isDone = false;
};

}  // namespace ParameterCollection

#endif
