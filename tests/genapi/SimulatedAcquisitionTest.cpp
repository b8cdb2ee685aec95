// The simulated camera acquires: each frame's chunks and events, fed through GenApi's adapters, reach the
// chunk and event features of its own node map.
#include "SimulatedCameraFixture.h"
#include <GenApi/ChunkAdapterGEV.h>
#include <GenApi/EventAdapterGEV.h>
#include <SimulatedPayload.h>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

using namespace GenApi;

namespace {

// What a frame's chunk features read while its payload was attached.
struct SReadFrame {
    int64_t frameId = -1;
    int64_t width = 0;
    int64_t crc = 0;
    std::string pixelFormat;
    uint32_t imageCrc = 0;
    bool hasChunks = false;
};

}  // namespace

class SimulatedAcquisition : public SimulatedCameraTest {
protected:
    // Runs a multi-frame acquisition of `frames` frames at 100 Hz and collects what each frame showed.
    void acquire(int frames) {
        enumeration("AcquisitionMode")->FromString("MultiFrame");
        integer("AcquisitionFrameCount")->SetValue(frames);
        floating("AcquisitionFrameRate")->SetValue(100.0);
        CChunkAdapterGEV chunks(map());
        CEventAdapterGEV events(map());
        camera().setAcquisitionListeners(
            [&](std::vector<uint8_t>& payload, bool hasChunks) {
                SReadFrame read;
                read.hasChunks = hasChunks;
                if (hasChunks) {
                    chunks.AttachBuffer(payload.data(), static_cast<int64_t>(payload.size()));
                    read.frameId = integer("ChunkFrameID")->GetValue();
                    read.width = integer("ChunkWidth")->GetValue();
                    read.crc = integer("ChunkCRC")->GetValue();
                    read.pixelFormat = enumeration("ChunkPixelFormat")->ToString().c_str();
                    const size_t imageBytes =
                        static_cast<size_t>(read.width * integer("ChunkHeight")->GetValue());
                    read.imageCrc = SimCamera::crc32(payload.data(), imageBytes);
                    chunks.DetachBuffer();
                }
                record(read);
            },
            [&](std::vector<uint8_t>& message) {
                events.DeliverMessage(message.data(), static_cast<uint32_t>(message.size()));
                std::lock_guard<std::mutex> lock(m_Mutex);
                m_EventFrameIds.push_back(integer("EventExposureEndFrameID")->GetValue());
            });
        as<ICommand>("AcquisitionStart")->Execute();
        std::unique_lock<std::mutex> lock(m_Mutex);
        m_Done.wait_for(lock, std::chrono::seconds(10),
                        [&] { return static_cast<int>(m_Frames.size()) >= frames; });
        lock.unlock();
        // The camera ends a multi-frame acquisition by itself; the listeners go before the adapters.
        for (int wait = 0; wait < 100 && camera().isAcquiring(); ++wait)
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        camera().setAcquisitionListeners(nullptr, nullptr);
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }

    void record(const SReadFrame& read) {
        std::lock_guard<std::mutex> lock(m_Mutex);
        m_Frames.push_back(read);
        m_Done.notify_all();
    }

    std::mutex m_Mutex;
    std::condition_variable m_Done;
    std::vector<SReadFrame> m_Frames;
    std::vector<int64_t> m_EventFrameIds;
};

TEST_F(SimulatedAcquisition, EveryFramesChunksAndEventsReachTheNodeMap) {
    // Without chunk mode a payload is the image alone.
    acquire(3);
    ASSERT_EQ(m_Frames.size(), 3u);
    EXPECT_FALSE(m_Frames[0].hasChunks);
    EXPECT_TRUE(m_EventFrameIds.empty());
    EXPECT_FALSE(camera().isAcquiring());

    // Chunk mode, one chunk switched off, and the exposure end event on.
    m_Frames.clear();
    as<IBoolean>("ChunkModeActive")->SetValue(true);
    enumeration("ChunkSelector")->FromString("Timestamp");
    as<IBoolean>("ChunkEnable")->SetValue(false);
    enumeration("EventSelector")->FromString("ExposureEnd");
    enumeration("EventNotification")->FromString("On");
    integer("Width")->SetValue(320);
    acquire(20);
    ASSERT_EQ(m_Frames.size(), 20u);
    for (size_t i = 0; i < m_Frames.size(); ++i) {
        SCOPED_TRACE(i);
        EXPECT_TRUE(m_Frames[i].hasChunks);
        EXPECT_EQ(m_Frames[i].frameId, static_cast<int64_t>(i));
        EXPECT_EQ(m_Frames[i].width, 320);
        EXPECT_EQ(m_Frames[i].pixelFormat, "Mono8");
        EXPECT_EQ(m_Frames[i].crc, m_Frames[i].imageCrc);
    }
    ASSERT_EQ(m_EventFrameIds.size(), 20u);
    EXPECT_EQ(m_EventFrameIds.back(), 19);
    // The chunk that was switched off is not in the payload: its feature has nothing to read.
    EXPECT_EQ(integer("ChunkTimestamp")->GetAccessMode(), NA);
}

// With the acquisition start trigger on, AcquisitionStart only arms the camera: frames begin with the
// software trigger, and never with a line trigger (the simulated camera has no lines); unplugging it after
// a count of frames ends the acquisition and its answers.
TEST_F(SimulatedAcquisition, TriggersAndUnpluggingShapeTheAcquisition) {
    std::atomic<int> frames{0};
    camera().setAcquisitionListeners([&](std::vector<uint8_t>&, bool) { ++frames; }, nullptr);
    floating("AcquisitionFrameRate")->SetValue(100.0);
    enumeration("TriggerSelector")->FromString("AcquisitionStart");
    enumeration("TriggerMode")->FromString("On");
    enumeration("TriggerSource")->FromString("Line0");
    as<ICommand>("AcquisitionStart")->Execute();
    as<ICommand>("TriggerSoftware")->Execute();
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    EXPECT_TRUE(camera().isAcquiring());
    EXPECT_EQ(frames, 0);
    enumeration("TriggerSource")->FromString("Software");
    as<ICommand>("TriggerSoftware")->Execute();
    for (int wait = 0; wait < 200 && frames < 3; ++wait)
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    EXPECT_GE(frames, 3);
    as<ICommand>("AcquisitionStop")->Execute();
    EXPECT_FALSE(camera().isAcquiring());
    // Once the listener is set again, no frame of the stopped acquisition can arrive any more.
    camera().setAcquisitionListeners([&](std::vector<uint8_t>&, bool) { ++frames; }, nullptr);

    enumeration("TriggerMode")->FromString("Off");
    integer("TestDisconnectAfterFrames")->SetValue(2);
    frames = 0;
    as<ICommand>("AcquisitionStart")->Execute();
    for (int wait = 0; wait < 200 && camera().isAcquiring(); ++wait)
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    camera().setAcquisitionListeners(nullptr, nullptr);
    EXPECT_EQ(frames, 2);
    EXPECT_FALSE(camera().isAcquiring());
    EXPECT_EQ(camera().GetAccessMode(), NI);
    EXPECT_THROW(integer("Width")->GetValue(true, true), GenICam::GenericException);
}
