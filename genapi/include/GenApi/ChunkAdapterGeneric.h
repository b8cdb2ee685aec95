// Chunk adapter for buffers whose chunks the caller lists: ID, offset and length of each.
#ifndef GENAPI_CHUNKADAPTERGENERIC_H
#define GENAPI_CHUNKADAPTERGENERIC_H

#include <GenApi/ChunkAdapter.h>
#include <cstddef>

namespace GENAPI_NAMESPACE {

#pragma pack(push, 1)
typedef struct SingleChunkData_t {
    uint64_t ChunkID;
    ptrdiff_t ChunkOffset;
    size_t ChunkLength;
} SingleChunkData_t;

// For chunk IDs that do not fit 64 bits: the ID as hexadecimal text.
typedef struct SingleChunkDataStr_t {
    GENICAM_NAMESPACE::gcstring ChunkID;
    ptrdiff_t ChunkOffset;
    size_t ChunkLength;
} SingleChunkDataStr_t;
#pragma pack(pop)

class GENAPI_DECL CChunkAdapterGeneric : public CChunkAdapter {
public:
    CChunkAdapterGeneric(INodeMap* pNodeMap = NULL, int64_t MaxChunkCacheSize = -1);
    virtual ~CChunkAdapterGeneric();

    // A buffer without a list has no layout to check: false, and attaching it does nothing.
    virtual bool CheckBufferLayout(uint8_t* pBuffer, int64_t BufferLength);
    virtual void AttachBuffer(uint8_t* pBuffer, int64_t BufferLength,
                              AttachStatistics_t* pAttachStatistics = NULL);
    virtual void AttachBuffer(uint8_t* pBuffer, SingleChunkData_t* ChunkData, int64_t NumChunks,
                              AttachStatistics_t* pAttachStatistics = NULL);
    virtual void AttachBuffer(uint8_t* pBuffer, SingleChunkDataStr_t* ChunkData, int64_t NumChunks,
                              AttachStatistics_t* pAttachStatistics = NULL);
};

}  // namespace GENAPI_NAMESPACE

#endif
