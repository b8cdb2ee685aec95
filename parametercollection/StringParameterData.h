// Snapshot of a string parameter: the base fields; the string is the value text.
#ifndef PARAMETERCOLLECTION_STRINGPARAMETERDATA_H
#define PARAMETERCOLLECTION_STRINGPARAMETERDATA_H

#include "ParameterData.h"

namespace ParameterCollection {

class PARAMETERCOLLECTION_EXPORT StringParameterData : public ParameterData {
public:
    StringParameterData() { parameterType = ParameterType_String; }
};

}  // namespace ParameterCollection

#endif
