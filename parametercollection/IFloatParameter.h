// The float parameter: plain, clipped, percent-of-range and limit writes, with try variants.
#ifndef PARAMETERCOLLECTION_IFLOATPARAMETER_H
#define PARAMETERCOLLECTION_IFLOATPARAMETER_H

#include "FloatParameterData.h"
#include "IParameter.h"

namespace ParameterCollection {

// None writes the value as it is, ClipToRange clips it to the limits; 1 and 2 write nothing.
enum EFloatValueCorrection : int { FloatValueCorrection_None = 0, FloatValueCorrection_ClipToRange = 3 };

class PARAMETERCOLLECTION_EXPORT IFloatParameter : public virtual IParameter {
public:
    ~IFloatParameter() override;

    virtual void setValue(double value) = 0;
    virtual double getValue() = 0;
    virtual double getMinimum() = 0;
    virtual double getMaximum() = 0;
    virtual double getIncrement() = 0;
    virtual bool hasIncrement() = 0;
    virtual bool trySetValue(double value) = 0;
    virtual double getValueOrDefault(double defaultValue) = 0;
    virtual bool trySetValue(double value, EFloatValueCorrection correction) = 0;
    virtual void setValue(double value, EFloatValueCorrection correction) = 0;
    virtual double getValuePercentOfRange() = 0;
    virtual void setValuePercentOfRange(double percent) = 0;
    virtual bool trySetValuePercentOfRange(double percent) = 0;
    virtual void setToMaximum() = 0;
    virtual void setToMinimum() = 0;
    virtual bool trySetToMaximum() = 0;
    virtual bool trySetToMinimum() = 0;
};

}  // namespace ParameterCollection

#endif
