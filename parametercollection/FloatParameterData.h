// Snapshot of a float parameter: the base fields, then value, limits, increment, precision, representation.
#ifndef PARAMETERCOLLECTION_FLOATPARAMETERDATA_H
#define PARAMETERCOLLECTION_FLOATPARAMETERDATA_H

#include "ParameterData.h"

namespace ParameterCollection {

class PARAMETERCOLLECTION_EXPORT FloatParameterData : public ParameterData {
public:
    FloatParameterData() { parameterType = ParameterType_Float; }

    double value = 0.0;
    double minimum = 0.0;
    double maximum = 0.0;
    bool hasIncrement = false;
    double increment = 0.0;  // read only when hasIncrement
    qint64 displayPrecision = 0;
    QString representation;
};

}  // namespace ParameterCollection

#endif
