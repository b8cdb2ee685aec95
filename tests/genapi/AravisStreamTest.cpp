// Frames from devices Aravis opens: the stream delivers every frame of an acquisition, and the chunk data of
// a GigE Vision frame reaches the chunk features through GenApi's GigE Vision chunk adapter.
#include "../FakeGigECamera.h"
#include "SimulatedCameraFixture.h"
#include "StreamFrames.h"
#include <GenApi/ChunkAdapterGEV.h>
#include <GenApiEngine/AravisDevices.h>
#include <GenApiEngine/AravisStream.h>
#include <SimulatedPayload.h>
#include <chrono>
#include <mutex>
#include <thread>

using namespace GenApi;

namespace {

struct SReceived {
    std::mutex mutex;
    std::vector<GenApiEngine::SStreamFrame> frames;
    std::vector<int64_t> expectedSizes;

    void add(const GenApiEngine::SStreamFrame& frame) {
        std::lock_guard<std::mutex> lock(mutex);
        frames.push_back(frame);
    }
    size_t count() {
        std::lock_guard<std::mutex> lock(mutex);
        return frames.size();
    }
};

// Starts the acquisition and waits (at most seconds) for the frames; then stops it.
void acquire(INodeMap* map, SReceived& received, size_t frames, double seconds) {
    CCommandPtr(map->GetNode("AcquisitionStart"))->Execute();
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
    while (received.count() < frames && std::chrono::steady_clock::now() < deadline)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    CCommandPtr(map->GetNode("AcquisitionStop"))->Execute();
}

// Frames arrive in order, whole, the size of the payload and without chunk data.
void expectImageFrames(SReceived& received, int64_t payloadSize) {
    std::lock_guard<std::mutex> lock(received.mutex);
    ASSERT_GE(received.frames.size(), 3u);
    for (size_t i = 0; i < received.frames.size(); ++i) {
        EXPECT_TRUE(received.frames[i].complete) << i;
        EXPECT_EQ(received.frames[i].size, payloadSize) << i;
        EXPECT_EQ(received.frames[i].layout, GenApiEngine::EChunkLayout::NoChunks) << i;
        if (i > 0) {
            EXPECT_GT(received.frames[i].frameId, received.frames[i - 1].frameId) << i;
        }
    }
}

}  // namespace

TEST(AravisStream, TheFakeCameraStreamsFramesInOrder) {
    CNodeMapRef fake(GenApiEngine::createAravisFakeDevice());
    CFloatPtr(fake._GetNode("AcquisitionFrameRate"))->SetValue(50);
    const int64_t payloadSize = CIntegerPtr(fake._GetNode("PayloadSize"))->GetValue();
    SReceived received;
    {
        GenApiEngine::CAravisStream stream(fake._Ptr,
                                           [&](const GenApiEngine::SStreamFrame& frame) { received.add(frame); });
        acquire(fake._Ptr, received, 5, 5.0);
        EXPECT_GE(stream.completeFrames(), 5u);
        EXPECT_EQ(stream.failedFrames(), 0u);
    }
    expectImageFrames(received, payloadSize);
    // The in-process fake camera is neither GigE Vision nor USB3 Vision: no layout to parse chunks by.
    EXPECT_EQ(GenApiEngine::createChunkAdapter(fake._Ptr), nullptr);
}

TEST(AravisStream, AGigEVisionCameraStreamsOverLoopback) {
    if (!CFakeGigECamera::installed())
        GTEST_SKIP() << CFakeGigECamera::program << " is not installed";
    CFakeGigECamera camera;
    ASSERT_TRUE(camera.start());
    std::this_thread::sleep_for(std::chrono::milliseconds(1500));
    CNodeMapRef device(GenApiEngine::openAravisDevice(CFakeGigECamera::deviceId));
    CIntegerPtr(device._GetNode("Width"))->SetValue(128);
    CIntegerPtr(device._GetNode("Height"))->SetValue(96);
    const int64_t payloadSize = CIntegerPtr(device._GetNode("PayloadSize"))->GetValue();
    EXPECT_EQ(payloadSize, 128 * 96);
    SReceived received;
    {
        GenApiEngine::CAravisStream stream(device._Ptr,
                                           [&](const GenApiEngine::SStreamFrame& frame) { received.add(frame); });
        acquire(device._Ptr, received, 3, 10.0);
    }
    expectImageFrames(received, payloadSize);
    std::unique_ptr<CChunkAdapter> adapter = GenApiEngine::createChunkAdapter(device._Ptr);
    EXPECT_NE(dynamic_cast<CChunkAdapterGEV*>(adapter.get()), nullptr);
}

class AravisStreamChunks : public SimulatedCameraTest {};

// Aravis' fake cameras send no chunk data: a frame of the simulated camera, in the GigE Vision layout, goes
// through an Aravis buffer the way a GigE Vision stream hands over a frame with chunks.
TEST_F(AravisStreamChunks, AGigEVisionBufferWithChunksReachesTheChunkFeatures) {
    SimCamera::SFrame taken;
    taken.frameId = 41;
    taken.timestamp = 123456789;
    taken.exposureTime = 2500;
    taken.width = 320;
    taken.height = 240;
    taken.pixelFormat = 0x01080001;
    taken.chunkMode = true;
    for (bool& enabled : taken.chunkEnabled)
        enabled = true;
    std::vector<uint8_t> payload = SimCamera::framePayload(taken);
    ArvBuffer* buffer = arv_buffer_new(payload.size(), payload.data());
    size_t filled = 0;
    const void* data = arv_buffer_get_data(buffer, &filled);
    ASSERT_EQ(data, payload.data());
    const size_t size = payload.size();

    CChunkAdapterGEV adapter(map());
    const GenApiEngine::SStreamFrame frame =
        GenApiEngine::frameOf(data, size, ARV_BUFFER_STATUS_SUCCESS, ARV_BUFFER_PAYLOAD_TYPE_EXTENDED_CHUNK_DATA,
                              GenApiEngine::EChunkLayout::GigEVision);
    ASSERT_TRUE(GenApiEngine::attachFrameChunks(adapter, frame));
    EXPECT_EQ(integer("ChunkFrameID")->GetValue(), 41);
    EXPECT_EQ(integer("ChunkTimestamp")->GetValue(), 123456789);
    EXPECT_EQ(integer("ChunkWidth")->GetValue(), 320);
    EXPECT_EQ(integer("ChunkHeight")->GetValue(), 240);
    EXPECT_DOUBLE_EQ(floating("ChunkExposureTime")->GetValue(), 2500);
    EXPECT_EQ(enumeration("ChunkPixelFormat")->ToString(), "Mono8");

    // An incomplete frame, or one whose payload is only an image, attaches nothing.
    const GenApiEngine::SStreamFrame late =
        GenApiEngine::frameOf(data, size, ARV_BUFFER_STATUS_MISSING_PACKETS,
                              ARV_BUFFER_PAYLOAD_TYPE_EXTENDED_CHUNK_DATA, GenApiEngine::EChunkLayout::GigEVision);
    EXPECT_FALSE(GenApiEngine::attachFrameChunks(adapter, late));
    const GenApiEngine::SStreamFrame image = GenApiEngine::frameOf(
        data, size, ARV_BUFFER_STATUS_SUCCESS, ARV_BUFFER_PAYLOAD_TYPE_IMAGE, GenApiEngine::EChunkLayout::GigEVision);
    EXPECT_FALSE(GenApiEngine::attachFrameChunks(adapter, image));
    // A buffer Aravis has not filled is not complete.
    EXPECT_FALSE(GenApiEngine::frameOf(buffer, GenApiEngine::EChunkLayout::GigEVision).complete);
    // A damaged trailer is refused by the adapter, and the last frame's values stay.
    payload[payload.size() - 1] ^= 0x40;
    EXPECT_THROW(GenApiEngine::attachFrameChunks(adapter, frame), GenICam::RuntimeException);
    EXPECT_EQ(integer("ChunkFrameID")->GetValue(), 41);
    g_object_unref(buffer);
}
