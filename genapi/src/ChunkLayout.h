// What the chunk adapters share: the trailer walk of GigE Vision and USB3 Vision payloads, and attaching a
// list of chunks to the chunk ports whose IDs they carry.
#ifndef GENAPI_ENGINE_CHUNKLAYOUT_H
#define GENAPI_ENGINE_CHUNKLAYOUT_H

#include <GenApi/ChunkAdapter.h>
#include <functional>
#include <vector>

namespace GenApiEngine {

struct SChunk {
    // Tells whether a port reads this chunk.
    std::function<bool(GenApi::CChunkPort&)> matches;
    int64_t offset;
    int64_t length;
};

// The chunks of a buffer whose chunks are each followed by an (ID, length) trailer, walked from the end;
// false unless the walk ends exactly at the first byte.
bool parseTrailers(const uint8_t* buffer, int64_t length, bool bigEndian, std::vector<SChunk>& chunks);

// Throws GenApi's exception for a buffer the trailers do not describe.
void checkTrailers(const uint8_t* buffer, int64_t length, bool bigEndian, std::vector<SChunk>& chunks);

// What the GigE Vision and USB3 Vision adapters do, in their byte order: tell whether the trailers describe
// a buffer, and attach a buffer's chunks (refusing a buffer they do not describe, the last one staying).
bool trailersDescribe(const uint8_t* buffer, int64_t length, bool bigEndian);
void attachTrailered(std::vector<GenApi::CChunkPort*>& ports, uint8_t* buffer, int64_t length, bool bigEndian,
                     int64_t maxCacheSize, GenApi::AttachStatistics_t* statistics);

// Attaches each chunk to the ports that read it (the chunk nearest the buffer's start wins), detaches the
// ports without a chunk, tells every port's node once and fills the statistics.
void attachChunks(std::vector<GenApi::CChunkPort*>& ports, uint8_t* buffer, const std::vector<SChunk>& chunks,
                  int64_t maxCacheSize, GenApi::AttachStatistics_t* statistics);

}  // namespace GenApiEngine

#endif
