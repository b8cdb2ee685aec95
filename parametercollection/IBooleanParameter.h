// The boolean parameter.
#ifndef PARAMETERCOLLECTION_IBOOLEANPARAMETER_H
#define PARAMETERCOLLECTION_IBOOLEANPARAMETER_H

#include "BooleanParameterData.h"
#include "IParameter.h"

namespace ParameterCollection {

class PARAMETERCOLLECTION_EXPORT IBooleanParameter : public virtual IParameter {
public:
    ~IBooleanParameter() override;

    virtual void setValue(bool value, bool verify) = 0;
    virtual bool getValue(bool verify, bool ignoreCache) = 0;
    virtual bool trySetValue(bool value) = 0;
    virtual bool getValueOrDefault(bool defaultValue) = 0;
};

}  // namespace ParameterCollection

#endif
