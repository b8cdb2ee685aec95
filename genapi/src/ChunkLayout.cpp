// Trailer walk and chunk attachment for the chunk adapters.
#include <GenApi/GenApi.h>
#include "ChunkLayout.h"
#include <algorithm>

using namespace GENAPI_NAMESPACE;

namespace GenApiEngine {

namespace {

uint32_t word(const uint8_t* bytes, bool bigEndian) {
    if (bigEndian)
        return uint32_t(bytes[0]) << 24 | uint32_t(bytes[1]) << 16 | uint32_t(bytes[2]) << 8 | bytes[3];
    return uint32_t(bytes[3]) << 24 | uint32_t(bytes[2]) << 16 | uint32_t(bytes[1]) << 8 | bytes[0];
}

}  // namespace

bool parseTrailers(const uint8_t* buffer, int64_t length, bool bigEndian, std::vector<SChunk>& chunks) {
    chunks.clear();
    if (!buffer || length <= 0)
        return false;
    int64_t end = length;
    while (end > 0) {
        if (end < 8)
            return false;
        const uint64_t id = word(buffer + end - 8, bigEndian);
        const int64_t chunkLength = word(buffer + end - 4, bigEndian);
        end -= 8;
        if (chunkLength > end)
            return false;
        end -= chunkLength;
        chunks.push_back(SChunk{[id](CChunkPort& port) { return port.CheckChunkID(id); }, end, chunkLength});
    }
    return true;
}

void checkTrailers(const uint8_t* buffer, int64_t length, bool bigEndian, std::vector<SChunk>& chunks) {
    if (!buffer || length <= 0)
        throw RUNTIME_EXCEPTION("Invalid buffer attached to chunk parser!");
    if (!parseTrailers(buffer, length, bigEndian, chunks))
        throw RUNTIME_EXCEPTION("Invalid layout of buffer attached to chunk parser!");
}

bool trailersDescribe(const uint8_t* buffer, int64_t length, bool bigEndian) {
    std::vector<SChunk> chunks;
    return parseTrailers(buffer, length, bigEndian, chunks);
}

void attachTrailered(std::vector<CChunkPort*>& ports, uint8_t* buffer, int64_t length, bool bigEndian,
                     int64_t maxCacheSize, AttachStatistics_t* statistics) {
    std::vector<SChunk> chunks;
    checkTrailers(buffer, length, bigEndian, chunks);
    attachChunks(ports, buffer, chunks, maxCacheSize, statistics);
}

void attachChunks(std::vector<CChunkPort*>& ports, uint8_t* buffer, const std::vector<SChunk>& chunks,
                  int64_t maxCacheSize, AttachStatistics_t* statistics) {
    std::vector<bool> attached(ports.size(), false);
    int attachments = 0;
    // From the end of the buffer to its start, so that of two chunks with one ID the first one stays.
    std::vector<const SChunk*> order;
    for (const SChunk& chunk : chunks)
        order.push_back(&chunk);
    std::sort(order.begin(), order.end(),
              [](const SChunk* a, const SChunk* b) { return a->offset > b->offset; });
    for (const SChunk* chunk : order) {
        const bool cache = maxCacheSize < 0 || chunk->length <= maxCacheSize;
        for (size_t i = 0; i < ports.size(); ++i) {
            if (!chunk->matches(*ports[i]))
                continue;
            ports[i]->AttachChunk(buffer, chunk->offset, chunk->length, cache);
            attached[i] = true;
            ++attachments;
        }
    }
    for (size_t i = 0; i < ports.size(); ++i) {
        if (attached[i])
            ports[i]->InvalidateNode();
        else
            ports[i]->DetachChunk();
    }
    if (statistics) {
        statistics->NumChunkPorts = static_cast<int>(ports.size());
        statistics->NumChunks = static_cast<int>(chunks.size());
        statistics->NumAttachedChunks = attachments;
    }
}

}  // namespace GenApiEngine
