// Payloads and event messages of the simulated camera.
#include "SimulatedPayload.h"
#include <array>
#include <cstring>

namespace SimCamera {

namespace {

void putBig(std::vector<uint8_t>& bytes, uint64_t value, int size) {
    for (int i = size - 1; i >= 0; --i)
        bytes.push_back(static_cast<uint8_t>(value >> (8 * i)));
}

void putLittle(std::vector<uint8_t>& bytes, uint64_t value, int size) {
    for (int i = 0; i < size; ++i)
        bytes.push_back(static_cast<uint8_t>(value >> (8 * i)));
}

void trailer(std::vector<uint8_t>& bytes, uint32_t id, size_t length) {
    putBig(bytes, id, 4);
    putBig(bytes, length, 4);
}

std::vector<uint8_t> image(const SFrame& frame) {
    const uint32_t bitsPerPixel = (frame.pixelFormat >> 16) & 0xff;
    const size_t bytesPerPixel = bitsPerPixel ? (bitsPerPixel + 7) / 8 : 1;
    std::vector<uint8_t> pixels(size_t(frame.width) * frame.height * bytesPerPixel);
    const size_t row = size_t(frame.width) * bytesPerPixel;
    for (uint32_t y = 0; y < frame.height; ++y) {
        uint8_t* line = pixels.data() + y * row;
        for (size_t x = 0; x < row; ++x)
            line[x] = static_cast<uint8_t>(x + y + frame.frameId);
    }
    return pixels;
}

// The chunk's data as its little-endian register on the chunk port reads it.
std::vector<uint8_t> chunkData(EChunk chunk, const SFrame& frame, uint32_t imageCrc) {
    std::vector<uint8_t> data;
    switch (chunk) {
        case EChunk::FrameID:
            putLittle(data, frame.frameId, 8);
            break;
        case EChunk::Timestamp:
            putLittle(data, frame.timestamp, 8);
            break;
        case EChunk::ExposureTime: {
            uint64_t bits;
            std::memcpy(&bits, &frame.exposureTime, sizeof bits);
            putLittle(data, bits, 8);
            break;
        }
        case EChunk::Width:
            putLittle(data, frame.width, 4);
            break;
        case EChunk::Height:
            putLittle(data, frame.height, 4);
            break;
        case EChunk::PixelFormat:
            putLittle(data, frame.pixelFormat, 4);
            break;
        default:
            putLittle(data, imageCrc, 4);
            break;
    }
    return data;
}

}  // namespace

std::vector<uint8_t> framePayload(const SFrame& frame) {
    std::vector<uint8_t> payload = image(frame);
    if (!frame.chunkMode)
        return payload;
    const uint32_t imageCrc = crc32(payload.data(), payload.size());
    trailer(payload, imageChunkId, payload.size());
    for (int chunk = 0; chunk < static_cast<int>(EChunk::Count); ++chunk) {
        if (!frame.chunkEnabled[chunk])
            continue;
        const std::vector<uint8_t> data = chunkData(static_cast<EChunk>(chunk), frame, imageCrc);
        payload.insert(payload.end(), data.begin(), data.end());
        trailer(payload, firstChunkId + static_cast<uint32_t>(chunk), data.size());
    }
    return payload;
}

std::vector<std::vector<uint8_t>> frameEvents(const SFrame& frame) {
    std::vector<std::vector<uint8_t>> messages;
    for (int event = 0; event < static_cast<int>(EEvent::Count); ++event) {
        if (!frame.eventEnabled[event])
            continue;
        std::vector<uint8_t> message{0x42, 0x00, 0x00, 0xc2};
        putBig(message, 16 + 8, 2);                            // length of what follows the header
        putBig(message, (frame.frameId + event) & 0xffff, 2);  // request ID
        putBig(message, 0, 2);                                 // reserved
        putBig(message, firstEventId + event, 2);
        putBig(message, 0, 2);  // stream channel
        putBig(message, frame.frameId & 0xffff, 2);
        putBig(message, frame.timestamp, 8);
        putBig(message, frame.frameId, 8);
        messages.push_back(std::move(message));
    }
    return messages;
}

uint32_t crc32(const uint8_t* data, size_t length) {
    static const std::array<uint32_t, 256> table = [] {
        std::array<uint32_t, 256> entries{};
        for (uint32_t i = 0; i < 256; ++i) {
            uint32_t c = i;
            for (int k = 0; k < 8; ++k)
                c = c & 1 ? 0xEDB88320u ^ (c >> 1) : c >> 1;
            entries[i] = c;
        }
        return entries;
    }();
    uint32_t crc = 0xFFFFFFFFu;
    for (size_t i = 0; i < length; ++i)
        crc = table[(crc ^ data[i]) & 0xff] ^ (crc >> 8);
    return crc ^ 0xFFFFFFFFu;
}

}  // namespace SimCamera
