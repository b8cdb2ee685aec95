// Chunk adapter for the chunk data of a GenDC container's metadata component, which carries its chunks in
// the USB3 Vision layout (little-endian trailers).
#ifndef GENAPI_CHUNKADAPTERGENDC_H
#define GENAPI_CHUNKADAPTERGENDC_H

#include <GenApi/ChunkAdapter.h>
#include <GenApi/ChunkAdapterU3V.h>

namespace GENAPI_NAMESPACE {

class GENAPI_DECL CChunkAdapterGenDC : public CChunkAdapterU3V {
public:
    CChunkAdapterGenDC(INodeMap* pNodeMap = NULL, int64_t MaxChunkCacheSize = -1);
    virtual ~CChunkAdapterGenDC();
};

}  // namespace GENAPI_NAMESPACE

#endif
