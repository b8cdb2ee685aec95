// What the engine takes from an Aravis stream buffer: the frame a listener sees.
#ifndef GENAPI_ENGINE_STREAMFRAMES_H
#define GENAPI_ENGINE_STREAMFRAMES_H

#include <GenApiEngine/AravisStream.h>
#include <arv.h>

namespace GenApiEngine {

// The frame of a buffer a stream of the given transport filled.
SStreamFrame frameOf(ArvBuffer* buffer, EChunkLayout transport);
// The frame of payload bytes with the status and payload type Aravis reported for them.
SStreamFrame frameOf(const void* data, size_t size, ArvBufferStatus status, ArvBufferPayloadType type,
                     EChunkLayout transport);
// The chunk layout of a device's frames: by its transport, NoChunks for others.
EChunkLayout chunkLayoutOf(ArvDevice* device);

}  // namespace GenApiEngine

#endif
