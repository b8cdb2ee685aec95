// Snapshot of an integer parameter: the base fields, then value, limits, increment and representation.
#ifndef PARAMETERCOLLECTION_INTEGERPARAMETERDATA_H
#define PARAMETERCOLLECTION_INTEGERPARAMETERDATA_H

#include "ParameterData.h"

namespace ParameterCollection {

class PARAMETERCOLLECTION_EXPORT IntegerParameterData : public ParameterData {
public:
    IntegerParameterData() { parameterType = ParameterType_Integer; }

    qint64 value = 0;
    qint64 minimum = 0;
    qint64 maximum = 0;
    qint64 increment = 0;
    QString representation;
};

}  // namespace ParameterCollection

#endif
