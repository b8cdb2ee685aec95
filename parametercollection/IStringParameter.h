// The string parameter.
#ifndef PARAMETERCOLLECTION_ISTRINGPARAMETER_H
#define PARAMETERCOLLECTION_ISTRINGPARAMETER_H

#include "IParameter.h"
#include "StringParameterData.h"

namespace ParameterCollection {

class PARAMETERCOLLECTION_EXPORT IStringParameter : public virtual IParameter {
public:
    ~IStringParameter() override;

    virtual QString getValue() = 0;
    virtual void setValue(QString value) = 0;
    virtual qint64 getMaxLength() = 0;
    virtual bool trySetValue(QString value) = 0;
    virtual QString getValueOrDefault(QString defaultValue) = 0;
};

}  // namespace ParameterCollection

#endif
