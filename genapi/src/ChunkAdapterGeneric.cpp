// Chunk adapter for chunks the caller lists with their IDs, offsets and lengths.
#include <GenApi/GenApi.h>
#include <GenApi/ChunkAdapterGeneric.h>
#include "ChunkLayout.h"
#include "IdBytes.h"
#include <memory>

using namespace GENAPI_NAMESPACE;

CChunkAdapterGeneric::CChunkAdapterGeneric(INodeMap* pNodeMap, int64_t MaxChunkCacheSize)
    : CChunkAdapter(pNodeMap, MaxChunkCacheSize) {}

CChunkAdapterGeneric::~CChunkAdapterGeneric() {}

bool CChunkAdapterGeneric::CheckBufferLayout(uint8_t*, int64_t) {
    return false;
}

void CChunkAdapterGeneric::AttachBuffer(uint8_t*, int64_t, AttachStatistics_t*) {}

void CChunkAdapterGeneric::AttachBuffer(uint8_t* pBuffer, SingleChunkData_t* ChunkData, int64_t NumChunks,
                                        AttachStatistics_t* pAttachStatistics) {
    std::vector<GenApiEngine::SChunk> chunks;
    for (int64_t i = 0; i < NumChunks; ++i) {
        const uint64_t id = ChunkData[i].ChunkID;
        chunks.push_back(GenApiEngine::SChunk{[id](CChunkPort& port) { return port.CheckChunkID(id); },
                                              static_cast<int64_t>(ChunkData[i].ChunkOffset),
                                              static_cast<int64_t>(ChunkData[i].ChunkLength)});
    }
    GenApiEngine::attachChunks(*m_ppChunkPorts, pBuffer, chunks, m_MaxChunkCacheSize, pAttachStatistics);
}

// IDs as text; one of odd length is refused after the chunks before it are attached.
void CChunkAdapterGeneric::AttachBuffer(uint8_t* pBuffer, SingleChunkDataStr_t* ChunkData, int64_t NumChunks,
                                        AttachStatistics_t* pAttachStatistics) {
    std::vector<GenApiEngine::SChunk> chunks;
    for (int64_t i = 0; i < NumChunks; ++i) {
        const std::string text = ChunkData[i].ChunkID.c_str();
        if (text.size() % 2 != 0) {
            GenApiEngine::attachChunks(*m_ppChunkPorts, pBuffer, chunks, m_MaxChunkCacheSize,
                                       pAttachStatistics);
            throw RUNTIME_EXCEPTION("Invalid chunk ID delivered: %s", text.c_str());
        }
        auto id = std::make_shared<std::vector<uint8_t>>(GenApiEngine::idBytes(text));
        chunks.push_back(GenApiEngine::SChunk{
            [id](CChunkPort& port) { return port.CheckChunkID(id->data(), static_cast<int>(id->size())); },
            static_cast<int64_t>(ChunkData[i].ChunkOffset), static_cast<int64_t>(ChunkData[i].ChunkLength)});
    }
    GenApiEngine::attachChunks(*m_ppChunkPorts, pBuffer, chunks, m_MaxChunkCacheSize, pAttachStatistics);
}
