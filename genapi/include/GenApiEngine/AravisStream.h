// The image stream of a device Aravis opened, and the chunk data of its frames through GenApi's chunk
// adapters: a camera application's frame metadata from a real GigE Vision or USB3 Vision camera.
#ifndef GENAPI_ENGINE_ARAVISSTREAM_H
#define GENAPI_ENGINE_ARAVISSTREAM_H

#include <GenApi/ChunkAdapter.h>
#include <GenApi/INodeMap.h>
#include <functional>
#include <memory>

namespace GenApiEngine {

// How a frame's chunk data is laid out, by the transport that delivered it.
enum class EChunkLayout { NoChunks, GigEVision, USB3Vision };

// A frame as the stream delivered it: the whole payload (the image and, with chunk data, every chunk
// followed by its trailer), valid for the duration of the listener's call.
struct SStreamFrame {
    uint8_t* data = nullptr;
    int64_t size = 0;
    EChunkLayout layout = EChunkLayout::NoChunks;
    uint64_t frameId = 0;
    uint64_t timestamp = 0;  // nanoseconds, as the device stamped the frame
    bool complete = false;   // false: the frame came incomplete, late or damaged, and its data is not to be read
};

// A chunk adapter for the frames of the device behind a map (GigE Vision or USB3 Vision layout), attached
// to the map; null for a map that no Aravis device serves.
GENAPI_DECL std::unique_ptr<GenApi::CChunkAdapter> createChunkAdapter(GenApi::INodeMap* map);

// Attaches a frame's chunks to the adapter; false (and nothing attached) for an incomplete frame or one
// without chunk data. Throws what the adapter throws for a layout it refuses.
GENAPI_DECL bool attachFrameChunks(GenApi::CChunkAdapter& adapter, const SStreamFrame& frame);

// Receives the frames of the device behind a map made by openAravisDevice or createAravisFakeDevice:
// buffers of the device's PayloadSize are handed to the listener on Aravis' stream thread as frames
// arrive, from AcquisitionStart on (the stream is set up before the acquisition starts).
class GENAPI_DECL CAravisStream {
public:
    using FFrame = std::function<void(const SStreamFrame& frame)>;

    // Throws GenICam::RuntimeException for a map no Aravis device serves or a stream that cannot open.
    CAravisStream(GenApi::INodeMap* map, FFrame onFrame, int bufferCount = 8);
    // Stops the stream: once it returns, the listener is not running and will not run again.
    ~CAravisStream();
    CAravisStream(const CAravisStream&) = delete;
    CAravisStream& operator=(const CAravisStream&) = delete;

    uint64_t completeFrames() const;
    uint64_t failedFrames() const;

private:
    struct SImpl;
    std::unique_ptr<SImpl> m_Impl;
};

}  // namespace GenApiEngine

#endif
