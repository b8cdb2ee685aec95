// The integer parameter: plain, corrected, percent-of-range and limit writes, with try variants.
#ifndef PARAMETERCOLLECTION_IINTEGERPARAMETER_H
#define PARAMETERCOLLECTION_IINTEGERPARAMETER_H

#include "IParameter.h"
#include "IntegerParameterData.h"

namespace ParameterCollection {

// How a value off the increment grid is moved onto it; values other than 0, 1 and 3 behave like Down.
enum EIntegerValueCorrection : int {
    IntegerValueCorrection_None = 0,
    IntegerValueCorrection_Up = 1,
    IntegerValueCorrection_Down = 2,
    IntegerValueCorrection_Nearest = 3
};

class PARAMETERCOLLECTION_EXPORT IIntegerParameter : public virtual IParameter {
public:
    ~IIntegerParameter() override;

    virtual void setValue(long long value, bool verify) = 0;
    virtual long long getValue() = 0;
    virtual long long getMinimum() = 0;
    virtual long long getMaximum() = 0;
    virtual long long getIncrement() = 0;
    virtual bool trySetValue(long long value) = 0;
    virtual long long getValueOrDefault(long long defaultValue) = 0;
    virtual bool trySetValue(long long value, EIntegerValueCorrection correction) = 0;
    virtual void setValue(long long value, EIntegerValueCorrection correction) = 0;
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
