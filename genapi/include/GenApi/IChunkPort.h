// Interface of ports that serve chunk data.
#ifndef GENAPI_ICHUNKPORT_H
#define GENAPI_ICHUNKPORT_H

#include <GenApi/IPort.h>
#include <Base/GCString.h>

namespace GENAPI_NAMESPACE {

// Pseudo addresses at which a chunk port answers with the address of its chunk's data in the buffer and
// with the chunk's length (8 bytes each, host byte order).
#define CHUNK_BASE_ADDRESS_REGISTER GC_INT64_MAX
#define CHUNK_BASE_ADDRESS_REGISTER_LEN 8
#define CHUNK_LENGTH_REGISTER (GC_INT64_MAX - 15)
#define CHUNK_LENGTH_REGISTER_LEN 8

GENICAM_INTERFACE GENAPI_DECL_ABSTRACT IChunkPort : virtual public IPort {
    virtual GENICAM_NAMESPACE::gcstring GetChunkID() const = 0;
    virtual EYesNo CacheChunkData() const = 0;
};

}  // namespace GENAPI_NAMESPACE

#endif
