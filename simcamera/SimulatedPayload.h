// What the simulated camera sends while it acquires: each frame's payload (the image, and its chunks in the
// GigE Vision layout when chunk mode is active) and the GigE Vision event messages of the frame.
#ifndef SIMCAMERA_SIMULATEDPAYLOAD_H
#define SIMCAMERA_SIMULATEDPAYLOAD_H

#include <cstddef>
#include <cstdint>
#include <vector>

namespace SimCamera {

// The chunks a frame can carry, in the order of ChunkSelector's entries.
enum class EChunk { FrameID, Timestamp, ExposureTime, Width, Height, PixelFormat, CRC, Count };
// The events a frame can cause, in the order of EventSelector's entries.
enum class EEvent { ExposureEnd, FrameStart, Count };

constexpr uint32_t imageChunkId = 0x0001;
constexpr uint32_t firstChunkId = 0x1001;  // FrameID; the others follow in EChunk order
constexpr uint16_t firstEventId = 0x9001;  // ExposureEnd; the others follow in EEvent order

// One frame as the camera's registers described it when it was taken.
struct SFrame {
    uint64_t frameId = 0;
    uint64_t timestamp = 0;  // nanoseconds since power-up, at exposure start
    double exposureTime = 0;
    uint32_t width = 0;
    uint32_t height = 0;
    uint32_t pixelFormat = 0;
    bool chunkMode = false;
    bool chunkEnabled[static_cast<int>(EChunk::Count)] = {};
    bool eventEnabled[static_cast<int>(EEvent::Count)] = {};
};

// The image (a pattern that moves with the frame) and, in chunk mode, the image as a chunk followed by the
// enabled chunks, each with its big-endian (ID, length) trailer.
std::vector<uint8_t> framePayload(const SFrame& frame);

// One EVENTDATA message per enabled event: header, item (ID, block ID, timestamp) and the frame ID as data.
std::vector<std::vector<uint8_t>> frameEvents(const SFrame& frame);

// CRC-32 (IEEE 802.3) of a block of bytes.
uint32_t crc32(const uint8_t* data, size_t length);

}  // namespace SimCamera

#endif
