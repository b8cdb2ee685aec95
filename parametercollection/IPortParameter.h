// The port parameter: raw reads and writes of device memory.
#ifndef PARAMETERCOLLECTION_IPORTPARAMETER_H
#define PARAMETERCOLLECTION_IPORTPARAMETER_H

#include "IParameter.h"

namespace ParameterCollection {

class PARAMETERCOLLECTION_EXPORT IPortParameter : public virtual IParameter {
public:
    ~IPortParameter() override;

    virtual void readRaw(qint64 address, void* buffer, qint64 length) = 0;
    virtual void writeRaw(qint64 address, void* buffer, qint64 length) = 0;
};

}  // namespace ParameterCollection

#endif
