// Chunk adapter for USB3 Vision: trailers little-endian.
#include <GenApi/GenApi.h>
#include <GenApi/ChunkAdapterU3V.h>
#include "ChunkLayout.h"

using namespace GENAPI_NAMESPACE;

CChunkAdapterU3V::CChunkAdapterU3V(INodeMap* pNodeMap, int64_t MaxChunkCacheSize)
    : CChunkAdapter(pNodeMap, MaxChunkCacheSize) {}

CChunkAdapterU3V::~CChunkAdapterU3V() {}

bool CChunkAdapterU3V::CheckBufferLayout(uint8_t* pBuffer, int64_t BufferLength) {
    return GenApiEngine::trailersDescribe(pBuffer, BufferLength, false);
}

// A buffer the trailers do not describe is refused whole, and the previous one stays attached.
void CChunkAdapterU3V::AttachBuffer(uint8_t* pBuffer, int64_t BufferLength,
                                    AttachStatistics_t* pAttachStatistics) {
    GenApiEngine::attachTrailered(*m_ppChunkPorts, pBuffer, BufferLength, false, m_MaxChunkCacheSize,
                                  pAttachStatistics);
}
