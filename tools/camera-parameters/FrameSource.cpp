// The frame sources of the chunks command.
#include "FrameSource.h"
#include <GenApi/ChunkAdapterGEV.h>
#include <GenApiEngine/AravisStream.h>

namespace {

// The simulated camera hands its payloads (GigE Vision layout) to a listener of its own thread.
class CSimulatedFrames : public CFrameSource {
public:
    CSimulatedFrames(CDeviceSession& session, FFrame onFrame, FEvent onEvent)
        : m_Camera(*session.simulatedCamera()) {
        m_Adapter.reset(new GenApi::CChunkAdapterGEV(session.nodeMap()));
        m_Camera.setAcquisitionListeners(
            [onFrame](std::vector<uint8_t>& payload, bool hasChunks) {
                onFrame(payload.data(), static_cast<int64_t>(payload.size()), hasChunks);
            },
            std::move(onEvent));
    }
    ~CSimulatedFrames() override { close(); }
    bool ended() const override { return !m_Camera.isAcquiring(); }
    void close() override { m_Camera.setAcquisitionListeners(nullptr, nullptr); }

private:
    SimCamera::CSimulatedCamera& m_Camera;
};

// An Aravis device's stream; the acquisition ends by itself only when the device is lost.
class CAravisFrames : public CFrameSource {
public:
    CAravisFrames(CDeviceSession& session, FFrame onFrame) : m_Session(session) {
        m_Adapter = GenApiEngine::createChunkAdapter(session.nodeMap());
        m_Stream.reset(new GenApiEngine::CAravisStream(
            session.nodeMap(), [onFrame](const GenApiEngine::SStreamFrame& frame) {
                if (frame.complete)
                    onFrame(frame.data, frame.size, frame.layout != GenApiEngine::EChunkLayout::NoChunks);
            }));
    }
    ~CAravisFrames() override { close(); }
    bool ended() const override { return m_Session.lost(); }
    void close() override { m_Stream.reset(); }

private:
    CDeviceSession& m_Session;
    std::unique_ptr<GenApiEngine::CAravisStream> m_Stream;
};

}  // namespace

bool CFrameSource::available(const CDeviceSession& session) {
    return session.simulatedCamera() || session.device().startsWith("aravis:");
}

std::unique_ptr<CFrameSource> CFrameSource::open(CDeviceSession& session, FFrame onFrame, FEvent onEvent) {
    if (session.simulatedCamera())
        return std::unique_ptr<CFrameSource>(
            new CSimulatedFrames(session, std::move(onFrame), std::move(onEvent)));
    if (available(session))
        return std::unique_ptr<CFrameSource>(new CAravisFrames(session, std::move(onFrame)));
    return nullptr;
}
