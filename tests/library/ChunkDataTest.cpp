// Chunk features are parameters like any other: while the simulated camera acquires with chunk data, each
// frame's values reach the library, parameterChanged fires for every frame and the decoupler follows.
#include "LibraryFixture.h"
#include <GenApi/ChunkAdapterGEV.h>
#include <QMutex>
#include <QVector>
#include <atomic>
#include <chrono>

namespace {

using Clock = std::chrono::steady_clock;

// Frames a 30 Hz acquisition must deliver in 10 s. A sanitizer's build runs unoptimised and instrumented,
// several times slower: there a listener sometimes takes longer than a frame period and the camera skips
// that frame's slot, so only the order and continuity of what arrives is checked there, not the rate.
#if defined(__SANITIZE_THREAD__) || defined(__SANITIZE_ADDRESS__)
constexpr int minimumFrames = 150;
#else
constexpr int minimumFrames = 280;
#endif

// When each frame was attached, and the frame ID the library read for it.
struct SFrames {
    QMutex mutex;
    QVector<long long> ids;
    QVector<Clock::time_point> attached;
};

}  // namespace

TEST_F(LibraryTest, EveryFramesChunkValuesReachTheLibraryAndTheDecouplerFollowsWithinAPeriod) {
    QSharedPointer<CParameter> frameId = parameter("ChunkFrameID");
    QSharedPointer<CParameter> width = parameter("ChunkWidth");
    ASSERT_FALSE(frameId->isEmpty());
    std::atomic<int> changed{0};
    QObject::connect(
        frameId.data(), &IParameter::parameterChanged, frameId.data(), [&] { ++changed; },
        Qt::DirectConnection);
    // Each decoupled snapshot that holds a frame ID, with the time it arrived. Before the first frame the
    // feature is unreadable: a snapshot of it then (the adapter connecting the chunk ports calls it back)
    // carries no frame ID.
    QMutex decoupledMutex;
    QVector<QPair<long long, Clock::time_point>> decoupled;
    QObject::connect(
        frameId.data(), &IParameter::parameterDataChangedDecoupled, frameId.data(),
        [&](QSharedPointer<const ParameterData> data) {
            QMutexLocker lock(&decoupledMutex);
            if (data->isReadable)
                decoupled.append({data->valueText.toLongLong(), Clock::now()});
        },
        Qt::DirectConnection);

    parameter("ChunkModeActive")->parseAndSetValue("1");
    parameter("AcquisitionFrameRate")->parseAndSetValue("30");
    // The application's part: each payload goes through the chunk adapter; the camera's chunk ports keep a
    // copy, so the values stay readable after the buffer is detached.
    GenApi::CChunkAdapterGEV adapter(map());
    SFrames frames;
    camera().setAcquisitionListeners(
        [&](std::vector<uint8_t>& payload, bool) {
            adapter.AttachBuffer(payload.data(), static_cast<int64_t>(payload.size()));
            const Clock::time_point now = Clock::now();
            const long long id = frameId->toString().toLongLong();
            adapter.DetachBuffer();
            QMutexLocker lock(&frames.mutex);
            frames.ids.append(id);
            frames.attached.append(now);
        },
        nullptr);
    parameter("AcquisitionStart")->parseAndSetValue("1");
    QThread::msleep(10000);
    parameter("AcquisitionStop")->parseAndSetValue("1");
    camera().setAcquisitionListeners(nullptr, nullptr);
    QThread::msleep(100);

    QMutexLocker lock(&frames.mutex);
    // 30 Hz for 10 s: about 300 frames, every one with the next frame ID.
    ASSERT_GE(frames.ids.size(), minimumFrames);
    for (int i = 0; i < frames.ids.size(); ++i)
        ASSERT_EQ(frames.ids[i], i) << "frame " << i;
    EXPECT_EQ(width->toString(), "640");
    EXPECT_GE(changed.load(), frames.ids.size());

    // The decoupler reports frames in order, the last one among them, each within a frame period of the
    // frame's arrival (it wakes every 30 ms; a slower machine may skip frames, never report them late).
    QMutexLocker decoupledLock(&decoupledMutex);
    ASSERT_FALSE(decoupled.isEmpty());
    EXPECT_EQ(decoupled.last().first, frames.ids.last());
    int late = 0;
    for (int i = 0; i < decoupled.size(); ++i) {
        const long long id = decoupled[i].first;
        ASSERT_GE(id, 0);
        ASSERT_LT(id, frames.ids.size());
        if (i > 0) {
            EXPECT_GT(id, decoupled[i - 1].first);
        }
        if (decoupled[i].second - frames.attached[static_cast<int>(id)] >
            std::chrono::milliseconds(1000 / 30))
            ++late;
    }
    EXPECT_LE(late, decoupled.size() / 10) << late << " of " << decoupled.size() << " decoupled signals late";
    EXPECT_GE(decoupled.size(), frames.ids.size() / 2);
}
