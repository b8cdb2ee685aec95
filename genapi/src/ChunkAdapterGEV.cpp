// Chunk adapter for GigE Vision: trailers big-endian.
#include <GenApi/GenApi.h>
#include <GenApi/ChunkAdapterGEV.h>
#include "ChunkLayout.h"

using namespace GENAPI_NAMESPACE;

CChunkAdapterGEV::CChunkAdapterGEV(INodeMap* pNodeMap, int64_t MaxChunkCacheSize)
    : CChunkAdapter(pNodeMap, MaxChunkCacheSize) {}

CChunkAdapterGEV::~CChunkAdapterGEV() {}

bool CChunkAdapterGEV::CheckBufferLayout(uint8_t* pBuffer, int64_t BufferLength) {
    return GenApiEngine::trailersDescribe(pBuffer, BufferLength, true);
}

// A buffer the trailers do not describe is refused whole, and the previous one stays attached.
void CChunkAdapterGEV::AttachBuffer(uint8_t* pBuffer, int64_t BufferLength,
                                    AttachStatistics_t* pAttachStatistics) {
    GenApiEngine::attachTrailered(*m_ppChunkPorts, pBuffer, BufferLength, true, m_MaxChunkCacheSize,
                                  pAttachStatistics);
}
