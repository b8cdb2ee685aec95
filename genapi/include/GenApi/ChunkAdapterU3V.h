// Chunk adapter for USB3 Vision payloads: chunk data followed by little-endian trailers.
#ifndef GENAPI_CHUNKADAPTERU3V_H
#define GENAPI_CHUNKADAPTERU3V_H

#include <GenApi/ChunkAdapter.h>

namespace GENAPI_NAMESPACE {

#pragma pack(push, 1)
typedef struct U3V_CHUNK_TRAILER {
    uint32_t ChunkID;
    uint32_t ChunkLength;
} U3V_CHUNK_TRAILER;
#pragma pack(pop)

class GENAPI_DECL CChunkAdapterU3V : public CChunkAdapter {
public:
    CChunkAdapterU3V(INodeMap* pNodeMap = NULL, int64_t MaxChunkCacheSize = -1);
    virtual ~CChunkAdapterU3V();

    // True when the trailers, walked from the end, consume the buffer exactly.
    virtual bool CheckBufferLayout(uint8_t* pBuffer, int64_t BufferLength);
    virtual void AttachBuffer(uint8_t* pBuffer, int64_t BufferLength,
                              AttachStatistics_t* pAttachStatistics = NULL);
};

}  // namespace GENAPI_NAMESPACE

#endif
