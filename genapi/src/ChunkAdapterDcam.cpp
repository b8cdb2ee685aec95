// Chunk adapter for IIDC payloads: GUID-named trailers walked from the end, with an optional CRC-32.
#include <GenApi/GenApi.h>
#include <GenApi/ChunkAdapterDcam.h>
#include "ChunkLayout.h"
#include <array>
#include <memory>

using namespace GENAPI_NAMESPACE;

namespace {

const int64_t TrailerSize = sizeof(DCAM_CHUNK_TRAILER);
const int64_t ChecksumSize = sizeof(DCAM_CHECKSUM);

uint32_t bigEndian32(const uint8_t* bytes) {
    return uint32_t(bytes[0]) << 24 | uint32_t(bytes[1]) << 16 | uint32_t(bytes[2]) << 8 | bytes[3];
}

// The chunks of the first `length` bytes; false unless the walk ends exactly at the first byte.
bool parseDcam(const uint8_t* buffer, int64_t length, std::vector<GenApiEngine::SChunk>& chunks) {
    chunks.clear();
    if (!buffer || length <= 0)
        return false;
    int64_t end = length;
    while (end > 0) {
        if (end < TrailerSize)
            return false;
        const uint8_t* trailer = buffer + end - TrailerSize;
        const uint32_t chunkLength = bigEndian32(trailer + 16);
        if (bigEndian32(trailer + 20) != static_cast<uint32_t>(~chunkLength))
            return false;
        end -= TrailerSize;
        if (chunkLength > end)
            return false;
        end -= chunkLength;
        auto guid = std::make_shared<std::array<uint8_t, 16>>();
        std::copy(trailer, trailer + 16, guid->begin());
        chunks.push_back(GenApiEngine::SChunk{[guid](CChunkPort& port) {
                                                  return port.CheckChunkID(guid->data(),
                                                                           static_cast<int>(guid->size()));
                                              },
                                              end, chunkLength});
    }
    return true;
}

// The bytes the trailers describe: the whole buffer, or all but a closing checksum.
bool parseWithOrWithoutCrc(const uint8_t* buffer, int64_t length, std::vector<GenApiEngine::SChunk>& chunks) {
    return parseDcam(buffer, length, chunks) ||
           (length > ChecksumSize && parseDcam(buffer, length - ChecksumSize, chunks));
}

uint32_t crc32(const uint8_t* data, int64_t length) {
    uint32_t crc = 0xFFFFFFFFu;
    for (int64_t i = 0; i < length; ++i) {
        crc ^= data[i];
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1) ^ (0xEDB88320u & (0u - (crc & 1u)));
    }
    return ~crc;
}

}  // namespace

CChunkAdapterDcam::CChunkAdapterDcam(INodeMap* pNodeMap, int64_t MaxChunkCacheSize)
    : CChunkAdapter(pNodeMap, MaxChunkCacheSize) {}

CChunkAdapterDcam::~CChunkAdapterDcam() {}

bool CChunkAdapterDcam::CheckBufferLayout(uint8_t* pBuffer, int64_t BufferLength) {
    std::vector<GenApiEngine::SChunk> chunks;
    return parseWithOrWithoutCrc(pBuffer, BufferLength, chunks);
}

// A buffer the trailers do not describe is refused whole, and the previous one stays attached.
void CChunkAdapterDcam::AttachBuffer(uint8_t* pBuffer, int64_t BufferLength,
                                     AttachStatistics_t* pAttachStatistics) {
    if (!pBuffer || BufferLength <= 0)
        throw RUNTIME_EXCEPTION("Invalid buffer attached to chunk parser!");
    std::vector<GenApiEngine::SChunk> chunks;
    if (!parseWithOrWithoutCrc(pBuffer, BufferLength, chunks))
        throw RUNTIME_EXCEPTION("Invalid layout of buffer attached to chunk parser!");
    GenApiEngine::attachChunks(*m_ppChunkPorts, pBuffer, chunks, m_MaxChunkCacheSize, pAttachStatistics);
}

bool CChunkAdapterDcam::HasCRC(uint8_t* pBuffer, int64_t BufferLength) {
    std::vector<GenApiEngine::SChunk> chunks;
    return !parseDcam(pBuffer, BufferLength, chunks) && BufferLength > ChecksumSize &&
           parseDcam(pBuffer, BufferLength - ChecksumSize, chunks);
}

bool CChunkAdapterDcam::CheckCRC(uint8_t* pBuffer, int64_t BufferLength) {
    if (!HasCRC(pBuffer, BufferLength))
        return false;
    const int64_t covered = BufferLength - ChecksumSize;
    return crc32(pBuffer, covered) == bigEndian32(pBuffer + covered);
}
