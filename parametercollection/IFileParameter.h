// A file stored on the device, as a parameter: chunked reads and writes and its content as text.
#ifndef PARAMETERCOLLECTION_IFILEPARAMETER_H
#define PARAMETERCOLLECTION_IFILEPARAMETER_H

#include "IParameter.h"

namespace ParameterCollection {

class PARAMETERCOLLECTION_EXPORT IFileParameter : public virtual IParameter {
public:
    ~IFileParameter() override;

    // The number of bytes read; 0 at the end of the file.
    virtual long long read(void* buffer, long long length) = 0;
    virtual bool write(void* buffer, long long length) = 0;
    virtual void close() = 0;
};

}  // namespace ParameterCollection

#endif
