// Interface of ports that serve chunk data.
#ifndef GENAPI_ICHUNKPORT_H
#define GENAPI_ICHUNKPORT_H

#include <GenApi/IPort.h>
#include <Base/GCString.h>

namespace GENAPI_NAMESPACE {

GENICAM_INTERFACE GENAPI_DECL_ABSTRACT IChunkPort : virtual public IPort {
    virtual GENICAM_NAMESPACE::gcstring GetChunkID() const = 0;
    virtual EYesNo CacheChunkData() const = 0;
};

}  // namespace GENAPI_NAMESPACE

#endif
