// Base of the chunk adapters: attaches the chunks of a payload buffer to the chunk ports of a node map.
#ifndef GENAPI_CHUNKADAPTER_H
#define GENAPI_CHUNKADAPTER_H

#include <GenApi/Types.h>
#include <GenApi/INodeMap.h>
#include <GenApi/ChunkPort.h>
#include <vector>

namespace GENAPI_NAMESPACE {

typedef struct AttachStatistics_t {
    int NumChunkPorts;      // chunk ports in the node map
    int NumChunks;          // chunks found in the buffer
    int NumAttachedChunks;  // chunks attached to a port (a chunk two ports read counts twice)
} AttachStatistics_t;

class GENAPI_DECL CChunkAdapter {
public:
    virtual ~CChunkAdapter();

    void AttachNodeMap(INodeMap* pNodeMap);
    void DetachNodeMap();
    virtual bool CheckBufferLayout(uint8_t* pBuffer, int64_t BufferLength) = 0;
    virtual void AttachBuffer(uint8_t* pBuffer, int64_t BufferLength,
                              AttachStatistics_t* pAttachStatistics = NULL) = 0;
    void DetachBuffer();
    // A new buffer with the chunks at the same offsets.
    void UpdateBuffer(uint8_t* pBaseAddress);
    void ClearCaches();

protected:
    CChunkAdapter(INodeMap* pNodeMap = NULL, int64_t MaxChunkCacheSize = -1);

    // A pointer, to keep the standard library's type out of the library's interface.
    std::vector<CChunkPort*>* m_ppChunkPorts;
    // Largest chunk a caching port copies: 0 none, -1 any.
    int64_t m_MaxChunkCacheSize;

private:
    CChunkAdapter(const CChunkAdapter&);
    CChunkAdapter& operator=(const CChunkAdapter&);
};

}  // namespace GENAPI_NAMESPACE

#endif
