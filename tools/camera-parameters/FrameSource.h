// Where the chunks command takes frames from: the simulated camera's frame loop or the stream of a device
// Aravis opened, each frame with the chunk adapter of its layout.
#ifndef TOOLS_CAMERAPARAMETERS_FRAMESOURCE_H
#define TOOLS_CAMERAPARAMETERS_FRAMESOURCE_H

#include "DeviceSession.h"
#include <GenApi/ChunkAdapter.h>
#include <functional>
#include <memory>

class CFrameSource {
public:
    // Called on the source's thread with each frame's payload; hasChunks tells whether it carries chunk data.
    using FFrame = std::function<void(uint8_t* data, int64_t size, bool hasChunks)>;
    // Called on the source's thread with each GigE Vision event message (the simulated camera sends them).
    using FEvent = std::function<void(std::vector<uint8_t>& message)>;

    // True when the session's device sends the tool frames.
    static bool available(const CDeviceSession& session);
    // The frames of the session's device, from now on; null when the device sends the tool no frames.
    // Throws GenICam::RuntimeException when the device's stream cannot be opened.
    static std::unique_ptr<CFrameSource> open(CDeviceSession& session, FFrame onFrame,
                                              FEvent onEvent = nullptr);
    virtual ~CFrameSource() = default;

    // The adapter that attaches a frame's chunks to the device's chunk features (null: the frames have none).
    GenApi::CChunkAdapter* adapter() const { return m_Adapter.get(); }
    // True once the acquisition ended by itself: its frames are all sent, or the device went away.
    virtual bool ended() const = 0;
    // Stops the delivery: once it returns, no frame is being or will be delivered.
    virtual void close() = 0;

protected:
    std::unique_ptr<GenApi::CChunkAdapter> m_Adapter;
};

#endif
