// Snapshot of a boolean parameter: the base fields, then the value.
#ifndef PARAMETERCOLLECTION_BOOLEANPARAMETERDATA_H
#define PARAMETERCOLLECTION_BOOLEANPARAMETERDATA_H

#include "ParameterData.h"

namespace ParameterCollection {

class PARAMETERCOLLECTION_EXPORT BooleanParameterData : public ParameterData {
public:
    BooleanParameterData() { parameterType = ParameterType_Boolean; }

    bool value = false;
};

}  // namespace ParameterCollection

#endif
