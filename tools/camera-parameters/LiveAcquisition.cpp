// Chunk and event features that follow the acquisition of a device.
#include "LiveAcquisition.h"

CLiveAcquisition::CLiveAcquisition(CDeviceSession& session) {
    if (!session.nodeMap() || !CFrameSource::available(session))
        return;
    if (session.simulatedCamera())
        m_EventAdapter.reset(new GenApi::CEventAdapterGEV(session.nodeMap()));
    try {
        m_Source = CFrameSource::open(
            session, [this](uint8_t* data, int64_t size, bool hasChunks) { onFrame(data, size, hasChunks); },
            [this](std::vector<uint8_t>& message) { onEvent(message); });
        m_ChunkAdapter = m_Source->adapter();
    } catch (const GenICam::GenericException& e) {
        m_Problem = QString::fromUtf8(e.GetDescription());
    }
}

CLiveAcquisition::~CLiveAcquisition() {
    if (m_Source)
        m_Source->close();
    m_Source.reset();
    m_EventAdapter.reset();
}

// The chunk ports keep pointing into the attached copy until the next frame is attached in its place.
void CLiveAcquisition::onFrame(uint8_t* data, int64_t size, bool hasChunks) {
    ++m_Frames;
    GenApi::CChunkAdapter* adapter = m_ChunkAdapter;
    if (!hasChunks || !adapter || size <= 0)
        return;
    std::vector<uint8_t>& copy = m_Copies[1 - m_Attached];
    copy.assign(data, data + size);
    try {
        adapter->AttachBuffer(copy.data(), static_cast<int64_t>(copy.size()));
        m_Attached = 1 - m_Attached;
    } catch (const GenICam::GenericException&) {
        // A frame whose chunks the adapter refuses leaves the last frame's values in place.
    }
}

void CLiveAcquisition::onEvent(std::vector<uint8_t>& message) {
    ++m_Events;
    if (!m_EventAdapter)
        return;
    try {
        m_EventAdapter->DeliverMessage(message.data(), static_cast<uint32_t>(message.size()));
    } catch (const GenICam::GenericException&) {
        // A malformed message changes nothing.
    }
}
