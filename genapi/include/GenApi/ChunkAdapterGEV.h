// Chunk adapter for GigE Vision payloads: chunk data followed by big-endian trailers.
#ifndef GENAPI_CHUNKADAPTERGEV_H
#define GENAPI_CHUNKADAPTERGEV_H

#include <GenApi/ChunkAdapter.h>

namespace GENAPI_NAMESPACE {

#pragma pack(push, 1)
typedef struct GVCP_CHUNK_TRAILER {
    uint32_t ChunkID;
    uint32_t ChunkLength;
} GVCP_CHUNK_TRAILER;
#pragma pack(pop)

class GENAPI_DECL CChunkAdapterGEV : public CChunkAdapter {
public:
    CChunkAdapterGEV(INodeMap* pNodeMap = NULL, int64_t MaxChunkCacheSize = -1);
    virtual ~CChunkAdapterGEV();

    // True when the trailers, walked from the end, consume the buffer exactly.
    virtual bool CheckBufferLayout(uint8_t* pBuffer, int64_t BufferLength);
    virtual void AttachBuffer(uint8_t* pBuffer, int64_t BufferLength,
                              AttachStatistics_t* pAttachStatistics = NULL);
};

}  // namespace GENAPI_NAMESPACE

#endif
