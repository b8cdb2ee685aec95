// Keeps a device's chunk and event features current while it acquires, for a window that shows them: each
// frame's chunk data and each event reach the features through GenApi's adapters, and the library's
// signals tell whoever shows them. Whoever starts the acquisition (a user executing AcquisitionStart) sees
// the values move.
#ifndef TOOLS_CAMERAPARAMETERS_LIVEACQUISITION_H
#define TOOLS_CAMERAPARAMETERS_LIVEACQUISITION_H

#include "FrameSource.h"
#include <GenApi/EventAdapterGEV.h>
#include <atomic>
#include <mutex>
#include <vector>

class CLiveAcquisition {
public:
    // Listens to the session's device from now on; a device that sends no frames is simply not followed.
    explicit CLiveAcquisition(CDeviceSession& session);
    // Stops listening: once it returns no frame or event is being delivered.
    ~CLiveAcquisition();
    CLiveAcquisition(const CLiveAcquisition&) = delete;
    CLiveAcquisition& operator=(const CLiveAcquisition&) = delete;

    // True when the device's frames are followed.
    bool following() const { return m_Source != nullptr; }
    uint64_t frames() const { return m_Frames; }
    uint64_t events() const { return m_Events; }
    // Why following failed (the device's stream could not be opened), or empty.
    const QString& problem() const { return m_Problem; }

private:
    void onFrame(uint8_t* data, int64_t size, bool hasChunks);
    void onEvent(std::vector<uint8_t>& message);

    std::unique_ptr<GenApi::CEventAdapterGEV> m_EventAdapter;
    std::unique_ptr<CFrameSource> m_Source;
    // The source's chunk adapter, published to the source's thread once the source is made.
    std::atomic<GenApi::CChunkAdapter*> m_ChunkAdapter{nullptr};
    // The frame the chunk features read: the payload is copied, since the camera reuses its buffer after
    // delivering it, and two copies alternate so that the one attached is never written.
    std::vector<uint8_t> m_Copies[2];
    int m_Attached = 1;
    std::atomic<uint64_t> m_Frames{0};
    std::atomic<uint64_t> m_Events{0};
    QString m_Problem;
};

#endif
